#pragma once

#include "host/player/skin/bitmap.h"

namespace velmora {

enum class BmpCode { kPlain, kRunLength4, kRunLength8 };

struct BmpHeader {
  int width, height;
  bool top_down;
  int bits;  // a pixel: 1, 4, 8, 16, 24, 32
  BmpCode code;
  uint32_t masks[3];  // red, green, blue; for 16 and 32 bits
  size_t pixels_at;   // offset in the file; not checked against its size
  Colour palette[256];
};

// Reads and checks what precedes the pixels. Colours that the palette lacks are black.
[[nodiscard]] bool ReadBmpHeader(const uint8_t* data, size_t size, BmpHeader* header);

}  // namespace velmora
