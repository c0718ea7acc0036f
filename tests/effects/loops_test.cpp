#include <gtest/gtest.h>

#include "effects/stages.h"
#include "tests/effects/reference_effects.h"
#include "tests/effects/signals.h"

namespace kelvo::test {
namespace {

// The plain loop, which only other processors run, and this one's.
TEST(EqualizerLoops, EqualTheReference) {
  const int32_t sliders[][kBands] = {{0, 27, 14, 3, 20, 9, 27, 0, 13, 15},
                                     {27, 27, 27, 27, 27, 27, 27, 27, 27, 27},
                                     {0, INT32_MIN, -100, INT32_MAX, -1, 28, 5, 6, 7, 8},
                                     {INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN,
                                      INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}};
  for (const BandsLoop loop : {&RunBandByBand, &RunBands}) {
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

}  // namespace
}  // namespace kelvo::test
