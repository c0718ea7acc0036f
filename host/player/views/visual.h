// The small picture of the sound in the main window.
#pragma once

#include <stdint.h>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"

namespace velmora {

constexpr Rect kVisualPlace = {24, 43, 76, 16};
constexpr int kVisualBars = 19;  // three pixels wide, one apart

enum class VisualMode { kOff, kSpectrum, kWave };

struct VisualState {
  VisualMode mode = VisualMode::kOff;
  uint8_t bars[kVisualBars] = {};         // heights, 0 to 16
  uint8_t peaks[kVisualBars] = {};        // heights of the marks above the bars; 0: none
  int16_t wave[kVisualPlace.width] = {};  // samples
};

void DrawVisual(Canvas* canvas, const Skin& skin, const VisualState& state);

}  // namespace velmora
