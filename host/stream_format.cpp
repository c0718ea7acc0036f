#include "host/stream_format.h"

#include <string.h>

namespace velmora {
namespace {

constexpr uint8_t kHeader[] = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                               0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr uint8_t kStream[] = {0x91, 0x07, 0xDC, 0xB7, 0xB7, 0xA9, 0xCF, 0x11,
                               0x8E, 0xE6, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
constexpr uint8_t kSound[] = {0x40, 0x9E, 0x69, 0xF8, 0x4D, 0x5B, 0xCF, 0x11,
                              0xA8, 0xFD, 0x00, 0x80, 0x5F, 0x5C, 0x44, 0x2B};
constexpr size_t kFirstObject = 30;
constexpr size_t kObjectHead = 24;    // its kind, and its size in 64 bits
constexpr size_t kKindOfStream = 24;  // in the object
constexpr size_t kWaveFormat = 78;
constexpr size_t kWaveFormatBytes = 12;  // as far as it is read

uint32_t Number(const uint8_t* at, int bytes) {
  uint32_t number = 0;
  for (int i = bytes; i > 0; --i) number = number << 8 | at[i - 1];
  return number;
}

bool Is(const uint8_t* at, const uint8_t (&kind)[16]) {
  return memcmp(at, kind, sizeof kind) == 0;
}

}  // namespace

bool FindStreamFormat(const uint8_t* bytes, size_t count, StreamFormat* format) {
  if (count < kFirstObject || !Is(bytes, kHeader)) return false;
  for (size_t at = kFirstObject; count - at >= kObjectHead;) {
    const uint8_t* const object = bytes + at;
    const size_t left = count - at;
    if (left >= kWaveFormat + kWaveFormatBytes && Is(object, kStream) &&
        Is(object + kKindOfStream, kSound)) {
      const uint8_t* const wave = object + kWaveFormat;
      *format = {Number(wave + 2, 2), Number(wave + 4, 4), Number(wave + 8, 4) / 125};
      return true;
    }
    const uint32_t size = Number(object + 16, 4);
    if (size < kObjectHead || size > left || Number(object + 20, 4) != 0) return false;
    at += size;
  }
  return false;
}

}  // namespace velmora
