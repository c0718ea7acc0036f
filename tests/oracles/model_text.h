#pragma once

#include <stdint.h>

#include <string>

namespace kelvo::oracle {

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
