#include "base/text/ansi.h"

#include <stdint.h>
#include <string.h>

namespace kelvo {
namespace {

// Windows-1252, the bytes 0x80 to 0x9F; all others are their own code points.
constexpr uint16_t kHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool Encode(wchar_t c, char* byte) noexcept {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
    *byte = static_cast<char>(c);
    return true;
  }
  for (int i = 0; i < 32; ++i) {
    if (kHigh[i] == c) {
      *byte = static_cast<char>(0x80 + i);
      return true;
    }
  }
  *byte = '?';
  return false;
}

}  // namespace

size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept {
  size_t written = 0;
  for (size_t i = 0; i < chars && src[i] != 0 && written < bytes; ++i) {
    const bool pair = src[i] >= 0xD800 && src[i] < 0xDC00 && i + 1 < chars &&
                      src[i + 1] >= 0xDC00 && src[i + 1] < 0xE000;
    if (!Encode(src[i], &dst[written++]) && lossy) *lossy = true;
    if (pair) ++i;
  }
  return written;
}

// Two simple passes instead of a decision per character: nearly all text is plain.
size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept {
  const size_t length = strnlen(src, bytes < capacity - 1 ? bytes : capacity - 1);
  const char* __restrict from = src;
  wchar_t* __restrict to = dst;
  uint8_t any = 0;
  for (size_t i = 0; i < length; ++i) {
    const uint8_t byte = static_cast<uint8_t>(from[i]);
    to[i] = byte;
    any |= byte;
  }
  if (any >= 0x80) {
    for (size_t i = 0; i < length; ++i) {
      if (to[i] >= 0x80 && to[i] < 0xA0) to[i] = static_cast<wchar_t>(kHigh[to[i] - 0x80]);
    }
  }
  to[length] = 0;
  return length;
}

}  // namespace kelvo
