// The ten resonators of the equalizer, run over a short block. Two loops with the same results:
// which one is faster depends on the processor.
#pragma once

#include <stdint.h>

#include "effects/coefficients.h"

namespace kelvo {

// Frames in one pass; even, because the loops swap the roles of old and new outputs.
constexpr int kPassFrames = 64;

struct EqualizerBands {
  // Reached through a pointer so that the compiler multiplies instead of taking the first band's
  // products apart into shifts.
  const ResonatorCoefficients* coefficients = kBandCoefficients;
  int32_t gains[kBands] = {};  // Q14
  // Outputs one and two frames back, 18 bits each.
  int32_t newer[kBands][kChannels] = {};
  int32_t older[kBands][kChannels] = {};
};

// A pass in work, channels interleaved.
struct EqualizerPass {
  int frames = 0;  // 1 to kPassFrames
  // What enters the filters, 17 bits; the first two frames are those before the pass.
  int32_t input[(kPassFrames + 2) * kChannels] = {};
  int32_t difference[kPassFrames * kChannels];  // input minus input two frames back
  int64_t sum[kPassFrames * kChannels];         // of the bands, for the band-by-band loop; Q14
};

// The share of the input in the output: a quarter, and the constant offset.
constexpr int32_t DryLevel(int32_t input) noexcept {
  return (input >> 2) + 12500;
}

// Gains for which a product of band and gain fits 32 bits; all slider positions give such gains.
constexpr bool IsNarrowGain(int32_t gain) noexcept {
  return gain > -16384 && gain <= 16384;
}

// Both write the finished samples of the pass.
// For processors with few registers and no vectors: one band after the other.
void RunBandByBand(EqualizerBands& bands, EqualizerPass& pass, int16_t* samples) noexcept;
// For processors with 128-bit vectors: all bands at once. Needs narrow gains.
void RunBandsSideBySide(EqualizerBands& bands, EqualizerPass& pass, int16_t* samples) noexcept;

#if defined(__SSE2__)
constexpr bool kVectorsPay = true;
#else
constexpr bool kVectorsPay = false;
#endif

}  // namespace kelvo
