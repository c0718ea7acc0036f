// Readable comparisons of UTF-16 text: EXPECT_EQ(Utf8(actual), "want"). And the bytes of files.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

namespace kelvo::test {

// Lone surrogates come out as their own three-byte sequence.
inline std::string Utf8(const wchar_t* text) {
  std::string out;
  while (*text) {
    uint32_t c = static_cast<uint16_t>(*text++);
    if (c >= 0xD800 && c < 0xDC00 && *text >= 0xDC00 && *text < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<uint16_t>(*text++) - 0xDC00u);
    }
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    const int following = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    out += static_cast<char>((following == 1   ? 0xC0
                              : following == 2 ? 0xE0
                                               : 0xF0) |
                             c >> 6 * following);
    for (int i = following - 1; i >= 0; --i) out += static_cast<char>(0x80 | (c >> 6 * i & 0x3F));
  }
  return out;
}

// UTF-16 from UTF-8. (The standard library's wide strings count on a 32-bit wchar_t natively.)
class Wide {
 public:
  Wide(const std::string& utf8) {
    for (size_t i = 0; i < utf8.size();) {
      const uint8_t lead = static_cast<uint8_t>(utf8[i++]);
      int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
      uint32_t c = following == 0 ? lead : lead & (0x3Fu >> following);
      for (; following > 0 && i < utf8.size(); --following) c = c << 6 | (utf8[i++] & 0x3Fu);
      if (c >= 0x10000) {
        units_.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
        c = 0xDC00 + ((c - 0x10000) & 0x3FF);
      }
      units_.push_back(static_cast<wchar_t>(c));
    }
    units_.push_back(0);
  }
  const wchar_t* c_str() const { return units_.data(); }
  operator const wchar_t*() const { return units_.data(); }

 private:
  std::vector<wchar_t> units_;
};

// A number as the bytes of a file.
inline std::string Le(uint64_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> 8 * i);
  return out;
}

// Bytes as the units of UTF-16: "ab" -> "a\0b\0".
inline std::string Utf16(const std::string& ascii) {
  std::string bytes;
  for (char c : ascii) bytes += {c, '\0'};
  return bytes;
}

}  // namespace kelvo::test
