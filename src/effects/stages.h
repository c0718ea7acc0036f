// The two stages over the processor's state. Not locked: one thread at a time.
#pragma once

#include <stdint.h>

#include "effects/effects_state.h"

namespace kelvo {

// A frame of the equalizer in work.
struct BandsFrame {
  int32_t difference[kChannels];  // input minus input two frames back, 18 bits
  int64_t sum[kChannels];         // of the bands; Q14
};

// A pass of the equalizer. Nothing of it outlives a block.
struct EqualizerPass {
  int frames;  // 1, or even and at most kPassFrames
  // What enters the filters, 17 bits, channels interleaved; the first two frames are those before.
  int32_t input[(kPassFrames + 2) * kChannels];
  BandsFrame work[kPassFrames];
  // Outputs one and two frames back, 18 bits each.
  int32_t newer[kBands][kChannels];
  int32_t older[kBands][kChannels];
};

// Turns the differences of a pass into sums, and the outputs into those that the next pass starts
// with. Of the state only the table and the gains are used.
using BandsLoop = void (*)(const EffectsState& state, EqualizerPass& pass);

// A pass of the bass stage, Q11 numbers.
struct BassPass {
  struct Memory {  // inputs and outputs one and two frames back
    int32_t newer_in, older_in;
    int32_t newer_out, older_out;
  };

  int frames;  // 1, or even and at most kPassFrames
  ResonatorCoefficients numbers;
  int32_t gain;  // Q28
  Memory memory[kChannels][kBassStages];
};

// The plain loops; and the fastest ones for the processor that this is compiled for (arm/loops.cpp,
// x86/loops.cpp, plain/loops.cpp). They have the same results.
void RunBandByBand(const EffectsState& state, EqualizerPass& pass) noexcept;
void RunBassByStage(BassPass& pass, int16_t* samples) noexcept;
void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept;
void RunBassStages(BassPass& pass, int16_t* samples) noexcept;

// Frames of the next pass of so many.
constexpr int NextPass(uint32_t frames) noexcept {
  return frames >= kPassFrames ? kPassFrames : frames == 1 ? 1 : static_cast<int>(frames & ~1u);
}

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
