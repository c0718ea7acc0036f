// The two stages over the processor's state. Not locked: one thread at a time.
#pragma once

#include <stdint.h>

#include "effects/effects_state.h"

namespace kelvo {

// A pass of the equalizer in work, channels interleaved. Nothing of it outlives a block.
struct EqualizerPass {
  int frames;  // 1 to kPassFrames
  // What enters the filters, 17 bits; the first two frames are those before the pass.
  int32_t input[(kPassFrames + 2) * kChannels];
  int32_t difference[kPassFrames * kChannels];  // input minus input two frames back
  int64_t sum[kPassFrames * kChannels];         // of the bands; Q14
  // Outputs one and two frames back, 18 bits each.
  int32_t newer[kBands][kChannels];
  int32_t older[kBands][kChannels];
};

// Runs the bands over the differences of a pass: the sums, and the outputs that the next pass
// starts with. Of the state only the table and the gains are used.
using BandsLoop = void (*)(const EffectsState& state, EqualizerPass& pass);

// The plain loop, one band after the other; and the fastest one for the processor that this is
// compiled for. Both have the same results.
void RunBandByBand(const EffectsState& state, EqualizerPass& pass) noexcept;
void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept;

// Slider positions: 0 is the strongest boost, 27 the strongest cut. The only floating point is
// here. The filters keep ringing through the change.
void SetEqualizer(EffectsState& state, int32_t preamp, const int32_t (&sliders)[kBands]) noexcept;

// Preamplifier and bands. In place, two channels interleaved; at least one frame.
void RunEqualizer(EffectsState& state, EqualizerPass& pass, BandsLoop loop, int16_t* samples,
                  uint32_t frames) noexcept;

// Bass enhancement: a resonator at the bottom of the spectrum, run twice in a row, and its two
// outputs added to half of the input. In place, two channels interleaved; at least one frame.
// `gain` is Q28, 0 to 2.2: the caller has read it once, as it may change at any time.
void RunBass(EffectsState& state, int32_t gain, int16_t* samples, uint32_t frames) noexcept;

}  // namespace kelvo
