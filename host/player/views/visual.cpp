#include "host/player/views/visual.h"

#include <algorithm>
#include <cstdlib>

namespace velmora {
namespace {

constexpr int kBarWidth = 3;
constexpr int kBarStep = 4;
constexpr int kHeight = kVisualPlace.height;

void DrawDots(Canvas* canvas, const Skin& skin) {
  for (int y = 1; y < kHeight; y += 2) {
    for (int x = 0; x < kVisualPlace.width; x += 2) {
      canvas->Fill({kVisualPlace.x + x, kVisualPlace.y + y, 1, 1},
                   skin.visual_colours[kVisualDots]);
    }
  }
}

void DrawSpectrum(Canvas* canvas, const Skin& skin, const VisualState& state) {
  for (int bar = 0; bar < kVisualBars; ++bar) {
    const int x = kVisualPlace.x + bar * kBarStep;
    const int height = std::min<int>(state.bars[bar], kHeight);
    for (int row = kHeight - height; row < kHeight; ++row) {
      canvas->Fill({x, kVisualPlace.y + row, kBarWidth, 1},
                   skin.visual_colours[kVisualSpectrumTop + row]);
    }
    const int peak = std::min<int>(state.peaks[bar], kHeight);
    if (peak > 0) {
      canvas->Fill({x, kVisualPlace.bottom() - peak, kBarWidth, 1},
                   skin.visual_colours[kVisualPeaks]);
    }
  }
}

int RowOf(int16_t sample) {
  return (32767 - sample) * kHeight / 65536;
}

void DrawWave(Canvas* canvas, const Skin& skin, const VisualState& state) {
  int before = RowOf(state.wave[0]);
  for (int x = 0; x < kVisualPlace.width; ++x) {
    const int row = RowOf(state.wave[x]);
    const int distance = std::abs(row - kHeight / 2) * 5 / (kHeight / 2 + 1);
    const int top = std::min(row, before);
    canvas->Fill({kVisualPlace.x + x, kVisualPlace.y + top, 1, std::abs(row - before) + 1},
                 skin.visual_colours[kVisualWaveMiddle + distance]);
    before = row;
  }
}

}  // namespace

void DrawVisual(Canvas* canvas, const Skin& skin, const VisualState& state) {
  if (state.mode == VisualMode::kOff) return;  // the main window's own background
  canvas->Fill(kVisualPlace, skin.visual_colours[kVisualBackground]);
  DrawDots(canvas, skin);
  if (state.mode == VisualMode::kSpectrum) {
    DrawSpectrum(canvas, skin, state);
  } else {
    DrawWave(canvas, skin, state);
  }
}

}  // namespace velmora
