#include "base/native/utf8.h"

#include <stdint.h>
#include <string.h>

#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr uint32_t kReplacement = 0xFFFD;

}  // namespace

size_t EncodeUtf8(const wchar_t* src, size_t length, char (&bytes)[4], size_t* used) noexcept {
  uint32_t c = src[0];
  *used = 1;
  if (c >= 0xD800 && c < 0xDC00 && length > 1 && src[1] >= 0xDC00 && src[1] < 0xE000) {
    c = 0x10000 + ((c - 0xD800) << 10) + (src[1] - 0xDC00u);
    *used = 2;
  } else if (c >= 0xD800 && c < 0xE000) {
    c = kReplacement;
  }
  const size_t count = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  constexpr uint8_t kLead[5] = {0, 0, 0xC0, 0xE0, 0xF0};
  for (size_t i = count - 1; i > 0; --i) {
    bytes[i] = static_cast<char>(0x80 | (c & 0x3F));
    c >>= 6;
  }
  bytes[0] = static_cast<char>(kLead[count] | c);
  return count;
}

size_t DecodeUtf8(const char* src, size_t length, wchar_t (&units)[2], size_t* used) noexcept {
  const uint8_t lead = static_cast<uint8_t>(*src);
  const size_t count = lead < 0x80   ? 1
                       : lead < 0xC0 ? 0
                       : lead < 0xE0 ? 2
                       : lead < 0xF0 ? 3
                       : lead < 0xF8 ? 4
                                     : 0;
  constexpr uint32_t kLeast[5] = {0, 0, 0x80, 0x800, 0x10000};
  uint32_t c = count < 2 ? lead : lead & (0x7Fu >> count);
  *used = 1;
  while (*used < count && *used < length && (src[*used] & 0xC0) == 0x80) {
    c = c << 6 | (static_cast<uint8_t>(src[(*used)++]) & 0x3F);
  }
  if (*used != count || c < kLeast[count] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
    c = kReplacement;
  }
  if (c < 0x10000) {
    units[0] = static_cast<wchar_t>(c);
    return 1;
  }
  units[0] = static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
  units[1] = static_cast<wchar_t>(0xDC00 + (c & 0x3FF));
  return 2;
}

size_t WideToUtf8(const wchar_t* src, char* dst, size_t capacity) noexcept {
  size_t written = 0;
  size_t used;
  for (size_t left = WideLength(src); left > 0; src += used, left -= used) {
    char bytes[4];
    const size_t count = EncodeUtf8(src, left, bytes, &used);
    if (count >= capacity - written) break;
    memcpy(dst + written, bytes, count);
    written += count;
  }
  dst[written] = 0;
  return written;
}

size_t Utf8ToUtf16(const char* src, wchar_t* dst, size_t capacity) noexcept {
  size_t written = 0;
  size_t used;
  for (size_t left = strlen(src); left > 0; src += used, left -= used) {
    wchar_t units[2];
    const size_t count = DecodeUtf8(src, left, units, &used);
    if (count >= capacity - written) break;
    for (size_t i = 0; i < count; ++i) dst[written++] = units[i];
  }
  dst[written] = 0;
  return written;
}

}  // namespace kelvo
