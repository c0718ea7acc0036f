#pragma once

#include <stddef.h>
#include <stdint.h>

#include <vector>

#include "host/player/skin/geometry.h"

namespace velmora {

// A colour as 0x00RRGGBB.
using Colour = uint32_t;

// A picture, rows from the top. Without pixels: width and height are 0.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::vector<Colour> pixels;

  Bitmap() = default;
  Bitmap(int w, int h, Colour colour = 0)
      : width(w), height(h), pixels(static_cast<size_t>(w) * static_cast<size_t>(h), colour) {}

  bool empty() const { return pixels.empty(); }
  Colour* Row(int y) { return pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(width); }
  const Colour* Row(int y) const { return const_cast<Bitmap*>(this)->Row(y); }
  // Black outside.
  Colour At(int x, int y) const {
    return Rect{0, 0, width, height}.Contains({x, y}) ? Row(y)[x] : 0;
  }
};

inline bool operator==(const Bitmap& a, const Bitmap& b) {
  return a.width == b.width && a.height == b.height && a.pixels == b.pixels;
}

}  // namespace velmora
