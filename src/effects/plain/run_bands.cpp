// For processors without a loop of their own.
#include "effects/stages.h"

namespace kelvo {

void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept {
  RunBandByBand(state, pass);
}

}  // namespace kelvo
