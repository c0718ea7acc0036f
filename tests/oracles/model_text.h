#pragma once

#include <stdint.h>

#include <string>

namespace kelvo::oracle {

using Units = std::u16string;

// The number that the bytes are, the lowest first.
inline uint64_t Little(const std::string& bytes) {
  uint64_t number = 0;
  for (size_t i = bytes.size(); i > 0; --i) {
    number = number << 8 | static_cast<uint8_t>(bytes[i - 1]);
  }
  return number;
}

// UTF-16LE, of whole units.
inline Units UnitsOf(const std::string& bytes) {
  Units units;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units += static_cast<char16_t>(Little(bytes.substr(i, 2)));
  }
  return units;
}

inline Units UpToNul(const Units& units) {
  return units.substr(0, units.find(u'\0'));
}

inline Units Upper(Units text) {
  for (char16_t& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char16_t>(c - 32) : c;
  return text;
}

// The models' 8-bit text is of code page 1252 without its middle part: a byte is a character's
// number.
inline std::string ToUtf8(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    const unsigned byte = static_cast<uint8_t>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
    }
  }
  return text;
}

// Letters' case as the system folds it, of such text.
inline std::string Folded(std::string bytes) {
  for (char& c : bytes) {
    const unsigned byte = static_cast<uint8_t>(c);
    if ((byte >= 'a' && byte <= 'z') || (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7)) {
      c = static_cast<char>(byte - 32);
    }
  }
  return bytes;
}

}  // namespace kelvo::oracle
