#pragma once

#include "host/player/skin/geometry.h"

namespace velmora {

// A thumb that slides along a line; values go from 0 to `most` with it.
struct Slider {
  int start, length;  // of the line, in the window's pixels
  int thumb;          // size of the thumb
  int most;           // the value at the end; at least 1

  constexpr int ThumbAt(int value) const {
    const int way = length - thumb;
    return start + static_cast<int>(
                       (static_cast<long long>(Clamp(value, 0, most)) * way + most / 2) / most);
  }
  // The value that puts the middle of the thumb there.
  constexpr int ValueAt(int pixel) const {
    const int way = length - thumb;
    const int moved = Clamp(pixel - start - thumb / 2, 0, way);
    return static_cast<int>((static_cast<long long>(moved) * most + way / 2) / way);
  }
};

}  // namespace velmora
