#include "host/player/skin/bmp_run_length.h"

namespace velmora {
namespace {

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

}  // namespace

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

}  // namespace velmora
