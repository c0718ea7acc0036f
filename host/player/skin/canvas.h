#pragma once

#include <string_view>

#include "host/player/skin/bitmap.h"

namespace velmora {

// What a window shows. Drawing outside of it, or with more of a picture than there is, draws what
// there is: skins in use have bitmaps of any size.
class Canvas {
 public:
  Canvas() = default;
  explicit Canvas(Size size) : picture_(size.width, size.height) {}

  Size size() const { return {picture_.width, picture_.height}; }
  const Bitmap& picture() const { return picture_; }
  Bitmap& picture() { return picture_; }

  void Fill(Rect area, Colour colour);
  // Copies `source` of the image to `to`.
  void Draw(const Bitmap& image, Rect source, Point to);
  void Draw(const Bitmap& image, Point to) { Draw(image, {0, 0, image.width, image.height}, to); }
  // Covers `area` with copies of `source`, from its upper left corner on.
  void Tile(const Bitmap& image, Rect source, Rect area);

 private:
  Bitmap picture_;
};

// The smallest rectangle that holds all differences of two pictures of one size; empty for none.
Rect Difference(const Bitmap& before, const Bitmap& after);

// The letters of text.bmp: 5 by 6 pixels, capitals, digits and some signs (skin_font.cpp).
constexpr int kLetterWidth = 5;
constexpr int kLetterHeight = 6;

// Whether every letter of the text has a picture, its own or that of its base letter.
bool FontHas(std::u16string_view text);

// Letters without a picture are left out as spaces.
void DrawSkinText(Canvas* canvas, const Bitmap& font, std::u16string_view text, Point at);

// Draws text in a font that the skin names but does not bring.
class TextPainter {
 public:
  virtual int Width(std::u16string_view text) = 0;
  // In one line, in the middle of the area's height, from its left edge. Text that is too long is
  // cut and ends in three points.
  virtual void Draw(Canvas* canvas, Rect area, std::u16string_view text, Colour colour) = 0;

 protected:
  ~TextPainter() = default;
};

}  // namespace velmora
