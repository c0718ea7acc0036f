// The format of a Windows Media file's sound as its decoder is told it. The library reports what
// the description of the codec says, and that may say nothing. Portable.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace velmora {

struct StreamFormat {
  uint32_t channels = 0;
  uint32_t sample_rate_hz = 0;
  uint32_t bit_rate_kbit = 0;
};

// Of the first sound in a file that begins with these bytes: its header, or as much as there is of
// it. False, and *format as it was, when there is none.
bool FindStreamFormat(const uint8_t* bytes, size_t count, StreamFormat* format);

}  // namespace velmora
