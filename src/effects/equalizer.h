// Preamplifier and ten-band equalizer. Two loops over the ten resonators, with the same results:
// which one is faster depends on the processor. Not locked: one thread at a time.
#pragma once

#include <stdint.h>

#include "effects/effects_state.h"

namespace kelvo {

// A pass in work, channels interleaved. Nothing of it outlives a block.
struct EqualizerPass {
  int frames;  // 1 to kPassFrames
  // What enters the filters, 17 bits; the first two frames are those before the pass.
  int32_t input[(kPassFrames + 2) * kChannels];
  int32_t difference[kPassFrames * kChannels];  // input minus input two frames back
  int64_t sum[kPassFrames * kChannels];         // of the bands, for the band-by-band loop; Q14
  // Outputs one and two frames back, 18 bits each.
  int32_t newer[kBands][kChannels];
  int32_t older[kBands][kChannels];
};

// The share of the input in the output: a quarter, and the constant offset.
constexpr int32_t DryLevel(int32_t input) noexcept {
  return (input >> 2) + 12500;
}

// Runs the bands over the pass and writes its finished samples. The state gives the numbers, its
// rings are left alone.
using BandsLoop = void (*)(const EffectsState& state, EqualizerPass& pass, int16_t* samples);

// For processors with few registers and no vectors: one band after the other.
void RunBandByBand(const EffectsState& state, EqualizerPass& pass, int16_t* samples) noexcept;
// For processors with 128-bit vectors: all bands at once. Products of band and gain must fit 32
// bits, as with all slider positions.
void RunBandsSideBySide(const EffectsState& state, EqualizerPass& pass, int16_t* samples) noexcept;
bool AreGainsNarrow(const EffectsState& state) noexcept;

BandsLoop FastestLoop(const EffectsState& state) noexcept;

// Slider positions: 0 is the strongest boost, 27 the strongest cut. The only floating point is
// here. The filters keep ringing through the change.
void SetEqualizer(EffectsState& state, int32_t preamp, const int32_t (&sliders)[kBands]) noexcept;

// In place, two channels interleaved; at least one frame.
void RunEqualizer(EffectsState& state, EqualizerPass& pass, BandsLoop loop, int16_t* samples,
                  uint32_t frames) noexcept;

}  // namespace kelvo
