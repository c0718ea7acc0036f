#include "base/text/ansi.h"

#include <stdint.h>
#include <string.h>

#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr unsigned kShiftJis = 932;
unsigned chosen_code_page = 0;
constexpr uint32_t kReplacement = 0xFFFD;

// Windows-1252, the bytes 0x80 to 0x9F; all others are their own code points.
constexpr uint16_t kHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// Returns the byte of a character; 0 when Windows-1252 lacks it.
char Encode1252(wchar_t c) noexcept {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (int i = 0; i < 32; ++i) {
    if (kHigh[i] == c) return static_cast<char>(0x80 + i);
  }
  return 0;
}

// UTF-8: one character at `src`, its 1 to 4 bytes or its 1 or 2 units. *used is what it takes of
// the source, of which `length`, at least 1, are there.
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

// One character of `length` bytes, at least 1: its units, and in *used its bytes.
size_t Decode(const char* src, size_t length, wchar_t (&units)[2], size_t* used) noexcept {
  const uint8_t byte = static_cast<uint8_t>(*src);
  *used = 1;
  units[0] = byte;
  if (byte < 0x80) return 1;
  if (chosen_code_page == kUtf8CodePage) return DecodeUtf8(src, length, units, used);
  if (chosen_code_page == kShiftJis) {
    const bool lead = (byte > 0x80 && byte < 0xA0) || (byte >= 0xE0 && byte <= 0xFC);
    if (lead && length > 1 && src[1] != 0) *used = 2;
    units[0] = 0xFFFD;
  } else if (byte < 0xA0) {
    units[0] = static_cast<wchar_t>(kHigh[byte - 0x80]);
  }
  return 1;
}

}  // namespace

void UseAnsiCodePage(unsigned code_page) noexcept {
  chosen_code_page = code_page;
}

size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept {
  size_t written = 0;
  size_t used;
  for (size_t i = 0; i < chars && src[i] != 0; i += used) {
    char encoded[4];
    size_t count = EncodeUtf8(src + i, chars - i, encoded, &used);
    bool known = used == 2 || src[i] < 0xD800 || src[i] >= 0xE000;
    if (chosen_code_page != kUtf8CodePage) {
      count = 1;
      encoded[0] = used == 2 || chosen_code_page == kShiftJis ? 0 : Encode1252(src[i]);
      if (src[i] < 0x80) encoded[0] = static_cast<char>(src[i]);
      known = encoded[0] != 0;
    }
    if (!known) {
      count = 1;
      encoded[0] = '?';
    }
    if (count > bytes - written) break;
    if (!known && lossy) *lossy = true;
    memcpy(dst + written, encoded, count);
    written += count;
  }
  return written;
}

size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept {
  size_t written = 0;
  size_t used;
  for (size_t i = 0; i < bytes && src[i] != 0; i += used) {
    wchar_t units[2];
    const size_t count = Decode(src + i, bytes - i, units, &used);
    if (count > capacity - 1 - written) break;
    for (size_t k = 0; k < count; ++k) dst[written++] = units[k];
  }
  dst[written] = 0;
  return written;
}

size_t AnsiFolderLength(const char* path, size_t bytes) noexcept {
  size_t length = 0;
  size_t used;
  for (size_t i = 0; i < bytes; i += used) {
    wchar_t units[2];
    Decode(path + i, bytes - i, units, &used);
    if (path[i] == '\\') length = i + 1;
  }
  return length;
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
