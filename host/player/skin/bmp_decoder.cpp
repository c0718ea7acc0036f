#include <utility>

#include "host/player/skin/bmp.h"

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

// Commands after a count of 0; larger numbers are counts of pixels that follow one by one.
enum { kEndOfRow = 0, kEndOfBitmap = 1, kMove = 2 };

// Where the next pixel goes: rows are stored from the bottom.
class Pen {
 public:
  Pen(const BmpHeader& header, Bitmap* bitmap)
      : header_(header), bitmap_(bitmap), row_(bitmap->height - 1) {}

  void Put(uint8_t colour) {
    if (column_ < bitmap_->width) bitmap_->Row(row_)[column_++] = header_.palette[colour];
  }
  bool NextRow() {
    column_ = 0;
    return Move(0, 1);
  }
  // False when that leaves the picture.
  bool Move(int right, int up) {
    column_ += right;
    row_ -= up;
    return row_ >= 0;
  }

 private:
  const BmpHeader& header_;
  Bitmap* bitmap_;
  int row_;
  int column_ = 0;
};

// The i-th pixel of packed ones: two a byte in the code of 4 bits, the left one in the upper half.
uint8_t PackedPixel(const uint8_t* bytes, int i, bool four_bits) {
  if (!four_bits) return bytes[i];
  return i % 2 == 0 ? bytes[i / 2] >> 4 : bytes[i / 2] & 15;
}

// Decodes the run-length code of 4 or 8 bits a pixel into the bitmap, which has the header's size.
// What the code does not reach stays as it is; runs beyond a row's end are cut. False when the code
// ends within a command.
bool DecodeRunLength(const uint8_t* code, size_t size, const BmpHeader& header, Bitmap* bitmap) {
  const bool four_bits = header.code == BmpCode::kRunLength4;
  Pen pen(header, bitmap);
  while (size >= 2) {
    const int count = code[0];
    const int value = code[1];
    const uint8_t* argument = code + 1;
    code += 2;
    size -= 2;
    if (count > 0) {
      // A run in the code of 4 bits alternates between two colours.
      for (int i = 0; i < count; ++i)
        pen.Put(PackedPixel(argument, four_bits ? i % 2 : 0, four_bits));
    } else if (value == kEndOfBitmap) {
      return true;
    } else if (value == kEndOfRow) {
      if (!pen.NextRow()) return true;
    } else if (value == kMove) {
      if (size < 2) return false;
      const bool inside = pen.Move(code[0], code[1]);
      code += 2;
      size -= 2;
      if (!inside) return true;
    } else {
      const size_t bytes = static_cast<size_t>(four_bits ? (value + 1) / 2 : value);
      if (size < bytes) return false;
      for (int i = 0; i < value; ++i) pen.Put(PackedPixel(code, i, four_bits));
      const size_t padded = bytes + bytes % 2;
      if (size < padded) return true;
      code += padded;
      size -= padded;
    }
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
