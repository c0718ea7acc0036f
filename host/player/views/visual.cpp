#include "host/player/views/main_view.h"

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

// The row of a height, from the top.
int RowOf(uint8_t height) {
  return kHeight - 1 - std::min<int>(height, kHeight - 1);
}

void DrawSpectrum(Canvas* canvas, const Skin& skin, const VisualState& state) {
  for (int bar = 0; bar < kVisualBars; ++bar) {
    const int x = kVisualPlace.x + bar * kBarStep;
    const int top = state.bars[bar] > 0 ? RowOf(state.bars[bar]) : kHeight;
    for (int row = top; row < kHeight; ++row) {
      canvas->Fill({x, kVisualPlace.y + row, kBarWidth, 1},
                   skin.visual_colours[kVisualSpectrumTop + row]);
    }
    if (state.peaks[bar] > 0) {
      canvas->Fill({x, kVisualPlace.y + RowOf(state.peaks[bar]), kBarWidth, 1},
                   skin.visual_colours[kVisualPeaks]);
    }
  }
}

void DrawLine(Canvas* canvas, const Skin& skin, const VisualState& state) {
  int before = RowOf(state.wave[0]);
  for (int x = 0; x < kVisualPlace.width; ++x) {
    const int row = RowOf(state.wave[x]);
    const int loudness = std::abs(2 * row - (kHeight - 1)) * 5 / kHeight;  // 0 to 4
    // Down or up to the point before, so that the line has no gaps.
    canvas->Fill(
        {kVisualPlace.x + x, kVisualPlace.y + std::min(row, before), 1, std::abs(row - before) + 1},
        skin.visual_colours[kVisualWaveMiddle + loudness]);
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
    DrawLine(canvas, skin, state);
  }
}

}  // namespace velmora
