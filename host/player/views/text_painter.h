#pragma once

#include <string_view>

#include "host/player/skin/canvas.h"

namespace velmora {

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
