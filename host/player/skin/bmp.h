// Windows bitmap files: 1, 4, 8, 16, 24 and 32 bits a pixel, plain, with colour masks, or with the
// run-length code of 4 and 8 bits.
#pragma once

#include "host/player/skin/bitmap.h"

namespace velmora {

// The largest picture that is decoded.
constexpr int kLargestBitmapSide = 4096;
constexpr int kLargestBitmapPixels = 4 * 1024 * 1024;

// False for what is no such file, is larger than the limits or lacks pixels; *bitmap then keeps its
// old value. A run-length code that ends early, as some programs write it, leaves the rest in the
// first colour.
[[nodiscard]] bool DecodeBmp(const uint8_t* data, size_t size, Bitmap* bitmap);

// What precedes the pixels.
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
