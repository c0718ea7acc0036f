// For processors without loops of their own.
#include "effects/stages.h"

namespace kelvo {

void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept {
  RunBandByBand(state, pass);
}

void RunBassStages(BassPass& pass, int16_t* samples) noexcept {
  RunBassByStage(pass, samples);
}

}  // namespace kelvo
