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

}  // namespace velmora
