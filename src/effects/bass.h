// Bass enhancement: a resonator at the bottom of the spectrum, run twice in a row, and its two
// outputs added to half of the input. Not locked: one thread at a time.
#pragma once

#include <stdint.h>

#include "effects/effects_state.h"

namespace kelvo {

// In place, two channels interleaved; at least one frame. `gain` is Q28, 0 to 2.2: the caller has
// read it once, as it may change at any time.
void RunBass(EffectsState& state, int32_t gain, int16_t* samples, uint32_t frames) noexcept;

}  // namespace kelvo
