// Everything that the processor remembers. An external library is handed the object and finds this
// behind the table of operations: the order is fixed, and on 32 bits every field is a word. Between
// two blocks all of it is as if each frame had been done by itself.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "effects/external_library.h"
#include "effects/fixed_point.h"

namespace kelvo {

constexpr int kRing = 3;        // frames that a ring holds
constexpr int kBassStages = 2;  // one after the other

// Where in the rings a frame goes and the two before it are; the frame goes to the place of the
// third before it.
struct RingPositions {
  int32_t now = 0, one_back = 2, two_back = 1;

  void Advance(uint32_t frames) noexcept {
    const auto turned = [frames](int32_t position) {
      return static_cast<int32_t>((static_cast<uint32_t>(position) + frames % kRing) % kRing);
    };
    *this = {turned(now), turned(one_back), turned(two_back)};
  }
};

struct Resonator {
  int32_t in[kRing], out[kRing];
};

struct EffectsState {
  Resonator equalizer[kBands][kChannels] = {};
  Resonator bass[kChannels][kBassStages] = {};  // Q11
  RingPositions equalizer_positions;
  RingPositions bass_positions;
  int32_t gains_q14[kBands] = {};
  int32_t gains_q28[kBands] = {};  // for external processing
  int32_t flat = 0;                // 1: all ten sliders are in the middle
  int32_t preamp_index = 14;       // 0 to 27; the level is (index + 2) / 16
  int32_t enabled = 1;             // not 0: the equalizer runs
  int32_t band_count = kBands;
  int32_t bass_mode = 0;    // not 0: the bass stage runs
  int32_t bass_gain_a = 0;  // Q28
  int32_t bass_gain_b = 0;  // Q28, for external processing
  const ResonatorCoefficients* equalizer_table = kBandCoefficients;
  const ResonatorCoefficients* bass_table = kBassCoefficients;
  int32_t processor_matches = 0;  // 1: the external library is for this processor
  void* library = nullptr;
  ExternalEqualizer external_equalizer = nullptr;
  ExternalBass external_bass = nullptr;
};

namespace layout {

// Holds for 32 bits; with wider pointers the order alone remains.
constexpr bool At(size_t offset, size_t want) noexcept {
  return sizeof(void*) != 4 || sizeof(void*) + offset == want;
}

static_assert(At(offsetof(EffectsState, equalizer), 4));
static_assert(At(offsetof(EffectsState, bass), 484));
static_assert(At(offsetof(EffectsState, equalizer_positions), 580));
static_assert(At(offsetof(EffectsState, bass_positions), 592));
static_assert(At(offsetof(EffectsState, gains_q14), 604));
static_assert(At(offsetof(EffectsState, gains_q28), 644));
static_assert(At(offsetof(EffectsState, flat), 684));
static_assert(At(offsetof(EffectsState, preamp_index), 688));
static_assert(At(offsetof(EffectsState, enabled), 692));
static_assert(At(offsetof(EffectsState, band_count), 696));
static_assert(At(offsetof(EffectsState, bass_mode), 700));
static_assert(At(offsetof(EffectsState, bass_gain_a), 704));
static_assert(At(offsetof(EffectsState, bass_gain_b), 708));
static_assert(At(offsetof(EffectsState, equalizer_table), 712));
static_assert(At(offsetof(EffectsState, bass_table), 716));
static_assert(At(offsetof(EffectsState, processor_matches), 720));
static_assert(At(offsetof(EffectsState, library), 724));
static_assert(At(offsetof(EffectsState, external_equalizer), 728));
static_assert(At(offsetof(EffectsState, external_bass), 732));
static_assert(At(sizeof(EffectsState), 736));  // the lock follows

}  // namespace layout
}  // namespace kelvo
