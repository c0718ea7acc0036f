#pragma once

#include <stdint.h>

#include <vector>

namespace kelvo {

constexpr int kRoundingSteps = 4;

// A whole file as the system's reader decodes it. Its first block is never the same twice, and the
// second overlaps it: from the third on, where `settled` is, decodings agree; the decoder's
// rounding depends on what came before, so agreeing means within a few steps.
struct Reference {
  // The first sample that is not the reference's, each of which stands `copies` times in `played`;
  // the count of samples when there is none.
  size_t FirstDifference(const std::vector<int16_t>& played, size_t copies = 1) const;

  std::vector<int16_t> samples;
  size_t settled = 0;
};

// Empty when the system cannot decode the file.
Reference DecodeWithSystem(const wchar_t* path);

}  // namespace kelvo
