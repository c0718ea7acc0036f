#include "host/player/skin/bmp_decoder.h"

#include <utility>

#include "host/player/skin/bmp_header.h"
#include "host/player/skin/bmp_run_length.h"

namespace velmora {
namespace {

// Spreads the bits under the mask over 0 to 255.
uint32_t Channel(uint32_t pixel, uint32_t mask) {
  if (mask == 0) return 0;
  uint32_t value = pixel & mask;
  while ((mask & 1) == 0) {
    mask >>= 1;
    value >>= 1;
  }
  return static_cast<uint32_t>(uint64_t{value} * 255 / mask);
}

Colour FromMasks(uint32_t pixel, const uint32_t (&masks)[3]) {
  return Channel(pixel, masks[0]) << 16 | Channel(pixel, masks[1]) << 8 | Channel(pixel, masks[2]);
}

Colour PixelOf(const uint8_t* row, int x, const BmpHeader& header) {
  const uint8_t* at = row + static_cast<size_t>(x) * static_cast<size_t>(header.bits) / 8;
  switch (header.bits) {
    case 1:
      return header.palette[*at >> (7 - x % 8) & 1];
    case 4:
      return header.palette[*at >> (x % 2 == 0 ? 4 : 0) & 15];
    case 8:
      return header.palette[*at];
    case 16:
      return FromMasks(at[0] | at[1] << 8, header.masks);
    case 24:
      return at[0] | at[1] << 8 | at[2] << 16;
    default:
      return FromMasks(at[0] | at[1] << 8 | at[2] << 16 | static_cast<uint32_t>(at[3]) << 24,
                       header.masks);
  }
}

bool DecodePlain(const uint8_t* data, size_t size, const BmpHeader& header, Bitmap* bitmap) {
  const size_t used =
      (static_cast<size_t>(header.width) * static_cast<size_t>(header.bits) + 7) / 8;
  const size_t stride = (used + 3) / 4 * 4;
  // The last row may lack what fills it up to whole words.
  if (size < stride * static_cast<size_t>(header.height - 1) + used) return false;
  for (int i = 0; i < header.height; ++i) {
    const uint8_t* row = data + stride * static_cast<size_t>(i);
    Colour* out = bitmap->Row(header.top_down ? i : header.height - 1 - i);
    for (int x = 0; x < header.width; ++x) out[x] = PixelOf(row, x, header);
  }
  return true;
}

}  // namespace

bool DecodeBmp(const uint8_t* data, size_t size, Bitmap* bitmap) {
  BmpHeader header;
  if (!ReadBmpHeader(data, size, &header) || header.pixels_at >= size) return false;
  const uint8_t* pixels = data + header.pixels_at;
  const size_t bytes = size - header.pixels_at;
  Bitmap decoded(header.width, header.height, header.palette[0]);
  const bool complete = header.code == BmpCode::kPlain
                            ? DecodePlain(pixels, bytes, header, &decoded)
                            : DecodeRunLength(pixels, bytes, header, &decoded);
  if (complete) *bitmap = std::move(decoded);
  return complete;
}

}  // namespace velmora
