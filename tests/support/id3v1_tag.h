#pragma once

#include <string>

namespace kelvo::test {

// The 128 bytes of an ID3v1 tag, fields padded with `pad`.
inline std::string Id3v1Tag(const std::string& title, const std::string& artist,
                            const std::string& album, unsigned genre, char pad = '\0') {
  const auto field = [pad](std::string text, size_t bytes) {
    text.resize(bytes, pad);
    return text;
  };
  return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field("1999", 4) +
         field("comment", 30) + static_cast<char>(genre);
}

}  // namespace kelvo::test
