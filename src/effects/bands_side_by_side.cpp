#include <string.h>

#include "effects/equalizer.h"
#include "effects/fixed_point.h"

namespace kelvo {
namespace {

// Four lanes hold two bands of both channels: left, right, left, right. The compiler turns the
// arithmetic into vector instructions, or into plain ones where there are none. Unsigned lanes
// wrap; shifts are done on signed ones.
using Lanes = uint32_t __attribute__((vector_size(16)));
using SignedLanes = int32_t __attribute__((vector_size(16)));

constexpr int kGroups = kBands * kChannels / 4;

struct Bank {
  Lanes minus_c0[kGroups], c1[kGroups], c2[kGroups], gain[kGroups];
};

Lanes Load(const int32_t* from) noexcept {
  Lanes lanes;
  memcpy(&lanes, from, sizeof(lanes));  // the source need not be aligned
  return lanes;
}

Lanes Spread(int32_t low_band, int32_t high_band) noexcept {
  const uint32_t low = static_cast<uint32_t>(low_band), high = static_cast<uint32_t>(high_band);
  return Lanes{low, low, high, high};
}

SignedLanes AddHalves(SignedLanes lanes) noexcept {
  return lanes + __builtin_shufflevector(lanes, lanes, 2, 3, 0, 1);
}

// Replaces the outputs two frames back by the new ones; stores one frame.
inline void Step(const Bank& bank, Lanes (&older)[kGroups], const Lanes (&newer)[kGroups],
                 const int32_t* difference, int32_t* wet) noexcept {
  const uint32_t left = static_cast<uint32_t>(difference[0]);
  const uint32_t right = static_cast<uint32_t>(difference[1]);
  const Lanes in = {left, right, left, right};
  // A sum of products needs 35 bits: the bits above and below the final shift are summed apart.
  SignedLanes whole = {}, fraction = {};
  for (int k = 0; k < kGroups; ++k) {
    const Lanes rung = bank.c1[k] * in + bank.c2[k] * newer[k] + bank.minus_c0[k] * older[k];
    older[k] = reinterpret_cast<Lanes>(reinterpret_cast<SignedLanes>(rung) >> 14);
    const SignedLanes share = reinterpret_cast<SignedLanes>(older[k] * bank.gain[k]);
    whole += share >> 12;
    fraction += share & 4095;
  }
  const SignedLanes sum = AddHalves(whole) + (AddHalves(fraction) >> 12);
  wet[0] = sum[0];
  wet[1] = sum[1];
}

}  // namespace

bool AreGainsNarrow(const EffectsState& state) noexcept {
  for (const int32_t gain : state.gains_q14) {
    if (gain <= -16384 || gain > 16384) return false;
  }
  return true;
}

void RunBandsSideBySide(const EffectsState& state, EqualizerPass& pass, int16_t* samples) noexcept {
  Bank bank;
  Lanes newer[kGroups], older[kGroups];
  for (int k = 0; k < kGroups; ++k) {
    const ResonatorCoefficients& low = state.equalizer_table[2 * k];
    const ResonatorCoefficients& high = state.equalizer_table[2 * k + 1];
    bank.minus_c0[k] = Spread(-low.c0, -high.c0);
    bank.c1[k] = Spread(low.c1, high.c1);
    bank.c2[k] = Spread(low.c2, high.c2);
    bank.gain[k] = Spread(state.gains_q14[2 * k], state.gains_q14[2 * k + 1]);
    newer[k] = Load(pass.newer[2 * k]);
    older[k] = Load(pass.older[2 * k]);
  }
  int32_t wet[kPassFrames * kChannels];
  const int values = pass.frames * kChannels;
  int i = 0;
  for (; i + 2 * kChannels <= values; i += 2 * kChannels) {
    Step(bank, older, newer, pass.difference + i, wet + i);
    Step(bank, newer, older, pass.difference + i + kChannels, wet + i + kChannels);
  }
  const bool odd = i < values;
  if (odd) Step(bank, older, newer, pass.difference + i, wet + i);
  memcpy(pass.newer, odd ? older : newer, sizeof(pass.newer));
  memcpy(pass.older, odd ? newer : older, sizeof(pass.older));

  const int32_t* input = pass.input + 2 * kChannels;
  for (i = 0; i < values; ++i) samples[i] = ClampToSample(wet[i] + DryLevel(input[i]));
}

}  // namespace kelvo
