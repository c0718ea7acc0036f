#include "effects/fixed_point.h"
#include "effects/stages.h"

namespace kelvo {
namespace {

// One band's numbers, small enough to stay in the registers of a StrongARM together with two
// frames' worth of outputs.
struct Band {
  int32_t minus_c0, c1, c2;  // c0 is negated for the multiply-and-add instruction
  int32_t gain;
};

enum class Sum { kStart, kContinue };

// Replaces the outputs two frames back by the new ones and adds their shares to the sums.
template <Sum kSum>
inline void Step(const Band& band, int32_t (&older)[kChannels], const int32_t (&newer)[kChannels],
                 const int32_t* difference, int64_t* sum) noexcept {
  for (int c = 0; c < kChannels; ++c) {
    const int32_t rung =
        WrapAdd(WrapMultiply(band.c2, newer[c]), WrapMultiply(band.minus_c0, older[c]));
    older[c] = WrapAdd(rung, WrapMultiply(band.c1, difference[c])) >> 14;
    const int64_t share = static_cast<int64_t>(older[c]) * band.gain;
    sum[c] = kSum == Sum::kStart ? share : sum[c] + share;
  }
}

// The table is reached through its pointer, so that the compiler multiplies instead of taking the
// first band's products apart into shifts.
template <Sum kSum>
void RunBand(const EffectsState& state, int b, EqualizerPass& pass) noexcept {
  const ResonatorCoefficients& coefficients = state.equalizer_table[b];
  const Band band = {-coefficients.c0, coefficients.c1, coefficients.c2, state.gains_q14[b]};
  int32_t newer[kChannels] = {pass.newer[b][0], pass.newer[b][1]};
  int32_t older[kChannels] = {pass.older[b][0], pass.older[b][1]};
  const int32_t* difference = pass.difference;
  int64_t* sum = pass.sum;
  // Two frames a round, so that old and new outputs change roles without being moved.
  for (const int32_t* end = difference + (pass.frames / 2) * 2 * kChannels; difference != end;) {
    Step<kSum>(band, older, newer, difference, sum);
    Step<kSum>(band, newer, older, difference + kChannels, sum + kChannels);
    difference += 2 * kChannels;
    sum += 2 * kChannels;
  }
  const bool odd = pass.frames % 2 != 0;
  if (odd) Step<kSum>(band, older, newer, difference, sum);
  for (int c = 0; c < kChannels; ++c) {
    pass.newer[b][c] = odd ? older[c] : newer[c];
    pass.older[b][c] = odd ? newer[c] : older[c];
  }
}

}  // namespace

void RunBandByBand(const EffectsState& state, EqualizerPass& pass) noexcept {
  RunBand<Sum::kStart>(state, 0, pass);
  for (int b = 1; b < kBands; ++b) RunBand<Sum::kContinue>(state, b, pass);
}

}  // namespace kelvo
