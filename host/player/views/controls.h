// Buttons and sliders: how they look and where they lie.
#pragma once

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"

namespace velmora {

// A button's place in its window and its four pictures, which are of the place's size. A button
// that does not stay down has the same pictures on and off.
struct ButtonLook {
  Rect place;
  kelvo::SkinFile file;
  Point off, off_pressed, on, on_pressed;
};

constexpr ButtonLook PlainButton(Rect place, kelvo::SkinFile file, Point normal, Point pressed) {
  return {place, file, normal, pressed, normal, pressed};
}

inline void DrawButton(Canvas* canvas, const Skin& skin, const ButtonLook& look, bool pressed,
                       bool on) {
  const Point from =
      on ? (pressed ? look.on_pressed : look.on) : (pressed ? look.off_pressed : look.off);
  canvas->Draw(skin.image(look.file), {from.x, from.y, look.place.width, look.place.height},
               {look.place.x, look.place.y});
}

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
