#include "effects/bass.h"

#include <gtest/gtest.h>

#include "tests/effects/reference_effects.h"
#include "tests/effects/signals.h"

namespace kelvo::test {
namespace {

TEST(Bass, EqualsTheReferenceForAnySignalGainAndBlocks) {
  for (const BassGains& gains : kBassGains) {
    for (const Signal& signal : AllSignals(3000)) {
      SCOPED_TRACE(gains.a);
      SCOPED_TRACE(signal.name);
      ReferenceBass reference;
      reference.gain = gains.a;
      std::vector<int16_t> want = signal.samples;
      reference.Process(&want);
      for (const uint32_t seed : {0u, 1u, 2u}) {
        Bass bass;
        const auto got = RunInBlocks(signal.samples, seed, [&](int16_t* samples, uint32_t frames) {
          bass.Process(samples, frames, gains.a);
        });
        ASSERT_EQ(got, want) << seed;
      }
    }
  }
}

TEST(Bass, KeepsRingingThroughAChangeOfGain) {
  Bass bass;
  ReferenceBass reference;
  std::vector<int16_t> got = AllSignals(333).back().samples, want = got;
  for (const int mode : {4, 1, 0, 3}) {
    reference.gain = kBassGains[mode].a;
    bass.Process(got.data(), static_cast<uint32_t>(got.size() / 2), kBassGains[mode].a);
    reference.Process(&want);
    ASSERT_EQ(got, want) << mode;
  }
}

}  // namespace
}  // namespace kelvo::test
