#include <emmintrin.h>

#include "effects/stages.h"

namespace kelvo {
namespace {

// Both channels of a band in the low halves of two 64-bit lanes, which is where the processor
// multiplies 32 bits by 32. The high halves hold whatever was left there.
using Lanes = __m128i;

struct Bank {
  Lanes minus_c0[kBands], c1[kBands], c2[kBands];
  Lanes gain[kBands];  // + 2^31: products are of numbers without signs
  Lanes start;         // what all sums carry because of that
};

Lanes Pair(int32_t left, int32_t right) noexcept {
  return _mm_set_epi32(0, right, 0, left);
}

// 2^31 times the signed low half.
Lanes Scaled(Lanes lanes) noexcept {
  const Lanes doubled = _mm_slli_epi64(lanes, 32);
  const Lanes sign = _mm_and_si128(doubled, _mm_set_epi32(INT32_MIN, 0, INT32_MIN, 0));
  return _mm_or_si128(_mm_srli_epi64(doubled, 1), sign);
}

// Replaces the outputs two frames back by the new ones; the sums over the bands are
//   y * gain = (y + 2^31) * (gain + 2^31) - 2^31 * y - 2^31 * gain - 2^62.
inline void Step(const Bank& bank, Lanes (&older)[kBands], const Lanes (&newer)[kBands],
                 BandsFrame& frame) noexcept {
  const Lanes sign = _mm_set1_epi32(INT32_MIN);
  const Lanes in = Pair(frame.difference[0], frame.difference[1]);
  Lanes products = bank.start, outputs = _mm_setzero_si128();
  for (int b = 0; b < kBands; ++b) {
    const Lanes past = _mm_add_epi32(_mm_mul_epu32(bank.c2[b], newer[b]),
                                     _mm_mul_epu32(bank.minus_c0[b], older[b]));
    older[b] = _mm_srai_epi32(_mm_add_epi32(_mm_mul_epu32(bank.c1[b], in), past), 14);
    outputs = _mm_add_epi32(outputs, older[b]);
    products = _mm_add_epi64(products, _mm_mul_epu32(_mm_xor_si128(older[b], sign), bank.gain[b]));
  }
  _mm_storeu_si128(reinterpret_cast<Lanes*>(frame.sum), _mm_sub_epi64(products, Scaled(outputs)));
}

}  // namespace

void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept {
  Bank bank;
  Lanes newer[kBands], older[kBands];
  uint64_t start = 0;
  for (int b = 0; b < kBands; ++b) {
    const ResonatorCoefficients& numbers = state.equalizer_table[b];
    const uint32_t gain = static_cast<uint32_t>(state.gains_q14[b]) + 0x80000000u;
    bank.minus_c0[b] = _mm_set1_epi32(-numbers.c0);
    bank.c1[b] = _mm_set1_epi32(numbers.c1);
    bank.c2[b] = _mm_set1_epi32(numbers.c2);
    bank.gain[b] = _mm_set1_epi32(static_cast<int32_t>(gain));
    start -= uint64_t{gain} << 31;
    newer[b] = Pair(pass.newer[b][0], pass.newer[b][1]);
    older[b] = Pair(pass.older[b][0], pass.older[b][1]);
  }
  bank.start = _mm_set1_epi64x(static_cast<int64_t>(start));

  if (pass.frames == 1) {
    Step(bank, older, newer, pass.work[0]);
  } else {
    for (int f = 0; f < pass.frames; f += 2) {
      Step(bank, older, newer, pass.work[f]);
      Step(bank, newer, older, pass.work[f + 1]);
    }
  }
  const bool odd = pass.frames == 1;
  for (int b = 0; b < kBands; ++b) {
    const Lanes newest = odd ? older[b] : newer[b], second = odd ? newer[b] : older[b];
    for (int c = 0; c < kChannels; ++c) {
      pass.newer[b][c] = _mm_cvtsi128_si32(c == 0 ? newest : _mm_srli_si128(newest, 8));
      pass.older[b][c] = _mm_cvtsi128_si32(c == 0 ? second : _mm_srli_si128(second, 8));
    }
  }
}

void RunBassStages(BassPass& pass, int16_t* samples) noexcept {
  RunBassByStage(pass, samples);
}

}  // namespace kelvo
