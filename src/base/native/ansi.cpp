#include "base/text/ansi.h"

#include <stdint.h>
#include <string.h>

#include "base/native/utf8.h"

namespace kelvo {
namespace {

constexpr unsigned kShiftJis = 932;
unsigned chosen_code_page = 0;

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

}  // namespace kelvo
