// The same decoder, compiled for this machine.
#pragma once

#include <stdint.h>

#include <vector>

namespace bench {

struct Decoded {
  std::vector<uint8_t> pcm;  // 16 bits, interleaved
  uint32_t channels = 0;
  uint32_t sample_rate = 0;
  double seconds() const {
    return static_cast<double>(pcm.size()) / (2.0 * channels) / sample_rate;
  }
};

// Decodes from a sample on (0: all); ends the run when it cannot.
Decoded DecodeHere(const std::vector<uint8_t>& file, int64_t first_sample = 0);

}  // namespace bench
