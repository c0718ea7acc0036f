#include "base/native/utf8.h"

#include <stdint.h>

namespace kelvo {

size_t WideToUtf8(const wchar_t* src, char* dst, size_t capacity) noexcept {
  size_t used = 0;
  while (*src) {
    uint32_t c = static_cast<uint16_t>(*src++);
    if (c >= 0xD800 && c < 0xDC00 && *src >= 0xDC00 && *src < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<uint16_t>(*src++) - 0xDC00u);
    }
    const size_t length = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    if (length >= capacity - used) break;
    constexpr uint8_t kLead[5] = {0, 0, 0xC0, 0xE0, 0xF0};
    for (size_t i = length - 1; i > 0; --i) {
      dst[used + i] = static_cast<char>(0x80 | (c & 0x3F));
      c >>= 6;
    }
    dst[used] = static_cast<char>(kLead[length] | c);
    used += length;
  }
  dst[used] = 0;
  return used;
}

size_t Utf8ToUtf16(const char* src, wchar_t* dst, size_t capacity) noexcept {
  size_t used = 0;
  while (*src) {
    const uint8_t lead = static_cast<uint8_t>(*src++);
    int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    uint32_t c = following == 0 ? lead : lead & (0x3F >> following);
    while (following-- > 0 && (*src & 0xC0) == 0x80) {
      c = c << 6 | (static_cast<uint8_t>(*src++) & 0x3F);
    }
    const size_t units = c >= 0x10000 ? 2 : 1;
    if (units >= capacity - used) break;
    if (units == 2) {
      dst[used++] = static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
      c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    dst[used++] = static_cast<wchar_t>(c);
  }
  dst[used] = 0;
  return used;
}

}  // namespace kelvo
