#pragma once

#include "host/player/skin/bmp_header.h"

namespace velmora {

// Decodes the run-length code of 4 or 8 bits a pixel into the bitmap, which has the header's size.
// What the code does not reach stays as it is; runs beyond a row's end are cut. False when the code
// ends within a command.
[[nodiscard]] bool DecodeRunLength(const uint8_t* code, size_t size, const BmpHeader& header,
                                   Bitmap* bitmap);

}  // namespace velmora
