#pragma once

#include <stdint.h>

#include <vector>

namespace kelvo {

// A whole file as the system's reader decodes it, and where its second block starts.
struct Reference {
  std::vector<int16_t> samples;
  size_t second_block = 0;
};

// Empty when the system cannot decode the file.
Reference DecodeWithSystem(const wchar_t* path);

}  // namespace kelvo
