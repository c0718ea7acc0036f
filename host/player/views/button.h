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

}  // namespace velmora
