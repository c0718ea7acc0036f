// The small picture of the sound in the main window.
#pragma once

#include <stdint.h>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"

namespace velmora {

constexpr Rect kVisualPlace = {24, 43, 76, 16};
constexpr int kVisualBars = 19;  // three pixels wide, one apart

enum class VisualMode { kOff = 0, kSpectrum = 1, kWave = 2 };  // numbers as they are kept

struct VisualState {
  VisualMode mode = VisualMode::kOff;
  // Heights, 0 to 15.
  uint8_t bars[kVisualBars] = {};
  uint8_t peaks[kVisualBars] = {};  // of the marks above the bars; 0: none
  uint8_t wave[kVisualPlace.width] = {};
};

void DrawVisual(Canvas* canvas, const Skin& skin, const VisualState& state);

}  // namespace velmora
