#include <gtest/gtest.h>

#include "effects/equalizer.h"
#include "tests/effects/reference_effects.h"
#include "tests/effects/signals.h"

namespace kelvo::test {
namespace {

// Each loop on its own: which of them the processor takes depends on gains and machine.
TEST(EqualizerLoops, EqualTheReference) {
  const int32_t sliders[][kBands] = {{0, 27, 14, 3, 20, 9, 27, 0, 13, 15},
                                     {27, 27, 27, 27, 27, 27, 27, 27, 27, 27},
                                     {}};
  for (const BandsLoop loop : {&RunBandByBand, &RunBandsSideBySide}) {
    for (const Signal& signal : AllSignals(700)) {
      SCOPED_TRACE(signal.name);
      EffectsState state;
      ReferenceEffects reference;
      EqualizerPass pass;
      for (const auto& bands : sliders) {
        SetEqualizer(state, 3, bands);
        reference.SetEqualizer(3, bands);
        auto got = signal.samples, want = got;
        RunEqualizer(state, pass, loop, got.data(), 700);
        reference.ProcessEqualizer(want.data(), 2800);
        ASSERT_EQ(got, want);
        ASSERT_EQ(DifferingOffset(&state, reference), 0u);
      }
    }
  }
}

TEST(EqualizerLoops, GainsThatVectorsCanTake) {
  const struct {
    int32_t gain;
    bool narrow;
  } kCases[] = {{16384, true},   {16385, false},  {-16383, true},
                {-16384, false}, {INT32_MIN, false}, {INT32_MAX, false}};
  for (const auto& c : kCases) {
    for (const int band : {0, 9}) {
      EffectsState state;
      state.gains_q14[band] = c.gain;
      EXPECT_EQ(AreGainsNarrow(state), c.narrow) << c.gain;
    }
  }
}

}  // namespace
}  // namespace kelvo::test
