#pragma once

#include <stdint.h>

#include <vector>

namespace kelvo {

// A whole file as the system's reader decodes it. Its first block is never the same twice, and the
// second overlaps it: from the third on, where `settled` is, every decoding is the same.
struct Reference {
  std::vector<int16_t> samples;
  size_t settled = 0;
};

// Empty when the system cannot decode the file.
Reference DecodeWithSystem(const wchar_t* path);

}  // namespace kelvo
