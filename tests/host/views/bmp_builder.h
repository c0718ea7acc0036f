#pragma once

#include <stdint.h>

#include <string>
#include <vector>

#include "tests/support/wide_text.h"

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
    using kelvo::test::Le;
    const bool old = header_bytes == 12;
    std::string info = Le(header_bytes, 4) + Le(static_cast<uint32_t>(width), old ? 2 : 4) +
                       Le(static_cast<uint32_t>(height), old ? 2 : 4) + Le(1, 2) + Le(bits, 2);
    if (!old) info += Le(code, 4) + std::string(12, '\0') + Le(colours_used, 4) + Le(0, 4);
    for (uint32_t mask : masks) info += Le(mask, 4);
    for (uint32_t colour : palette) info += Le(colour, old ? 3 : 4);
    const uint64_t at = pixels_at >= 0 ? static_cast<uint64_t>(pixels_at) : 14 + info.size();
    return "BM" + Le(0, 8) + Le(at, 4) + info + pixels;
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
