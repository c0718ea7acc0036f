// What the equalizer window shows, and what is where in it.
#pragma once

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"
#include "host/player/views/controls.h"

namespace velmora {

constexpr Size kEqualizerSize = {275, 116};
constexpr int kEqualizerSliders = 11;  // the preamplifier, then the ten bands from low to high
constexpr Rect kCurvePlace = {86, 17, 113, 19};

enum class EqualizerControl { kNone, kClose, kOn, kBass, kPresets, kTitleBar, kSlider };

struct EqualizerHit {
  EqualizerControl control;
  int slider;  // for kSlider
};

EqualizerHit EqualizerHitAt(Point point);
// Of a button.
Rect EqualizerButtonPlace(EqualizerControl control);
Rect EqualizerSliderPlace(int slider);

// Values as the effects take them: 0 is the strongest boost and at the top.
constexpr Slider kGainSlider = {38, 63, 11, 27};

struct EqualizerViewState {
  bool active = true;
  EqualizerControl pressed = EqualizerControl::kNone;
  int pressed_slider = 0;
  bool on = false;
  bool bass = false;
  bool clips = false;  // a light beside the curve
  int sliders[kEqualizerSliders] = {};
  // Rows of the curve from the left, 0 at the top; what lies outside is drawn at the edge.
  int curve[kCurvePlace.width] = {};
};

void DrawEqualizer(Canvas* canvas, const Skin& skin, const EqualizerViewState& state);

}  // namespace velmora
