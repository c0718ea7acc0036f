// For processors without a loop of their own.
#include "effects/equalizer.h"

namespace kelvo {

void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept {
  RunBandByBand(state, pass);
}

}  // namespace kelvo
