#pragma once

#include <stdint.h>

#include <string>
#include <vector>

namespace velmora::test {

// A bitmap file, field by field; those left alone are as a drawing program writes them.
struct BmpBuilder {
  int32_t width = 2;
  int32_t height = 2;
  uint16_t bits = 24;
  uint32_t code = 0;
  std::vector<uint32_t> palette;  // 0x00RRGGBB
  std::vector<uint32_t> masks;    // written behind the header
  std::string pixels;             // as in the file: rows from the bottom
  int64_t pixels_at = -1;         // instead of the place behind the palette
  uint32_t header_bytes = 40;     // 12: the old header
  uint32_t colours_used = 0;

  std::string Build() const {
    std::string info;
    Put(&info, header_bytes, 4);
    const bool old = header_bytes == 12;
    Put(&info, static_cast<uint32_t>(width), old ? 2 : 4);
    Put(&info, static_cast<uint32_t>(height), old ? 2 : 4);
    Put(&info, 1, 2);
    Put(&info, bits, 2);
    if (!old) {
      for (uint32_t word : {code, 0u, 0u, 0u, colours_used, 0u}) Put(&info, word, 4);
    }
    for (uint32_t mask : masks) Put(&info, mask, 4);
    for (uint32_t colour : palette) Put(&info, colour, old ? 3 : 4);
    std::string file = "BM";
    Put(&file, 0, 4);
    Put(&file, 0, 4);
    Put(&file,
        pixels_at >= 0 ? static_cast<uint32_t>(pixels_at) : static_cast<uint32_t>(14 + info.size()),
        4);
    return file + info + pixels;
  }

 private:
  static void Put(std::string* out, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) *out += static_cast<char>(value >> 8 * i & 255);
  }
};

// "01 ff 20" as bytes.
inline std::string Bytes(const char* hex) {
  std::string bytes;
  const std::string text = hex;
  for (size_t i = 0; i + 1 < text.size(); i += 3) {
    bytes += static_cast<char>(std::stoi(text.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

}  // namespace velmora::test
