#include "effects/fixed_point.h"
#include "effects/stages.h"

namespace kelvo {

void RunBandByBand(const EffectsState& state, EqualizerPass& pass) noexcept {
  for (int f = 0; f < pass.frames; ++f) {
    for (int64_t& sum : pass.work[f].sum) sum = 0;
  }
  for (int b = 0; b < kBands; ++b) {
    const ResonatorCoefficients& numbers = state.equalizer_table[b];
    for (int c = 0; c < kChannels; ++c) {
      int32_t newer = pass.newer[b][c], older = pass.older[b][c];
      for (BandsFrame* frame = pass.work; frame != pass.work + pass.frames; ++frame) {
        const int32_t rung =
            WrapSubtract(WrapMultiply(numbers.c2, newer), WrapMultiply(numbers.c0, older));
        older = newer;
        newer = WrapAdd(rung, WrapMultiply(numbers.c1, frame->difference[c])) >> 14;
        frame->sum[c] += static_cast<int64_t>(newer) * state.gains_q14[b];
      }
      pass.newer[b][c] = newer;
      pass.older[b][c] = older;
    }
  }
}

}  // namespace kelvo
