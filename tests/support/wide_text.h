// Readable comparisons of UTF-16 text: EXPECT_EQ(Utf8(actual), "want").
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

// UTF-16 from ASCII. (The standard library's wide strings count on a 32-bit wchar_t natively.)
class Wide {
 public:
  Wide(const std::string& ascii) : units_(ascii.begin(), ascii.end()) { units_.push_back(0); }
  const wchar_t* c_str() const { return units_.data(); }
  operator const wchar_t*() const { return units_.data(); }

 private:
  std::vector<wchar_t> units_;
};

}  // namespace kelvo::test
