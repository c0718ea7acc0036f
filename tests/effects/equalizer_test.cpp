#include "effects/equalizer.h"

#include <gtest/gtest.h>

#include "tests/effects/reference_effects.h"
#include "tests/effects/signals.h"

namespace kelvo::test {
namespace {

struct Sliders {
  const char* name;
  int32_t preamp;
  int32_t bands[kBands];
};

const Sliders kSliders[] = {
    {"middle", 13, {14, 14, 14, 14, 14, 14, 14, 14, 14, 14}},
    {"all up", 0, {}},
    {"all down", 27, {27, 27, 27, 27, 27, 27, 27, 27, 27, 27}},
    {"bands up, level down", 27, {}},
    {"bands down, level up", 0, {27, 27, 27, 27, 27, 27, 27, 27, 27, 27}},
    {"mixed", 9, {0, 27, 14, 3, 20, 9, 27, 0, 13, 15}},
    {"just too strong for narrow products", 13, {-1, 14, 14, 14, 14, 14, 14, 14, 14, 14}},
    {"far out of range", 13, {-2000000, 1999, -70000, 50, -3, 28, 65536, -1, 100000, 7}},
    {"farthest out of range",
     INT32_MIN,
     {INT32_MIN, INT32_MAX, INT32_MIN, INT32_MAX, 0, 1, 2, 3, 4, INT32_MIN}},
};

TEST(Equalizer, EqualsTheReferenceForAnySignalSlidersAndBlocks) {
  for (const Sliders& sliders : kSliders) {
    for (const Signal& signal : AllSignals(1500)) {
      for (const Equalizer::Loop loop : {Equalizer::Loop::kFastest, Equalizer::Loop::kBandByBand}) {
        SCOPED_TRACE(sliders.name);
        SCOPED_TRACE(signal.name);
        Equalizer whole(loop), split(loop);
        whole.Set(sliders.preamp, sliders.bands);
        split.Set(sliders.preamp, sliders.bands);
        ReferenceEqualizer reference;
        reference.preamp_index = whole.preamp_index();
        for (int b = 0; b < kBands; ++b) reference.gains[b] = whole.gain_q14(b);
        std::vector<int16_t> want = signal.samples;
        reference.Process(&want);
        const auto run = [&](Equalizer& equalizer, uint32_t seed) {
          return RunInBlocks(signal.samples, seed, [&](int16_t* samples, uint32_t frames) {
            equalizer.Process(samples, frames);
          });
        };
        ASSERT_EQ(run(whole, 0), want);
        ASSERT_EQ(run(split, 7), want);
      }
    }
  }
}

TEST(Equalizer, KeepsRingingThroughAChangeOfSliders) {
  // The second sliders need the other loop: both must leave the same histories behind.
  Equalizer equalizer;
  ReferenceEqualizer reference;
  std::vector<int16_t> got = AllSignals(400).back().samples, want = got;
  for (const Sliders* sliders : {&kSliders[5], &kSliders[7], &kSliders[1], &kSliders[0]}) {
    equalizer.Set(sliders->preamp, sliders->bands);
    reference.preamp_index = equalizer.preamp_index();
    for (int b = 0; b < kBands; ++b) reference.gains[b] = equalizer.gain_q14(b);
    equalizer.Process(got.data(), static_cast<uint32_t>(got.size() / 2));
    reference.Process(&want);
    ASSERT_EQ(got, want);
  }
}

TEST(Equalizer, BeforeTheFirstSetOnlyTheDryLevelAndTheOffsetRemain) {
  Equalizer equalizer;
  int16_t samples[] = {0, 3, 4, -1, 32767, -32768};
  equalizer.Process(samples, 3);
  const int16_t want[] = {12500, 12500, 12501, 12499, 20691, 4308};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(samples[i], want[i]) << i;
}

TEST(Equalizer, GainOfASlider) {
  const struct {
    int32_t slider, q14, q28;
  } kCases[] = {
      {0, 16384, 268435456},
      {14, 6189, 101408952},
      {27, -3276, -53687092},
      {28, -4004, -65617556},
      {-1, 17112, 280365920},
      // Beyond 32 bits the low bits remain.
      {-100, 89201, 1461481984},
      {INT32_MIN, 381812736, INT32_MIN},
      {INT32_MAX, -381812736, INT32_MIN},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.slider);
    Equalizer equalizer;
    int32_t bands[kBands] = {};
    bands[3] = c.slider;
    equalizer.Set(13, bands);
    EXPECT_EQ(equalizer.gain_q14(3), c.q14);
    EXPECT_EQ(equalizer.gain_q28(3), c.q28);
    EXPECT_EQ(equalizer.gain_q14(2), 16384);
  }
}

TEST(Equalizer, PreampAndFlatFlag) {
  const struct {
    int32_t slider, index;
  } kCases[] = {{0, 27},  {13, 14}, {14, 13},       {27, 0},        {28, 0},
                {-1, 27}, {-5, 27}, {INT32_MAX, 0}, {INT32_MIN, 27}};
  Equalizer equalizer;
  EXPECT_EQ(equalizer.preamp_index(), 14);
  EXPECT_FALSE(equalizer.is_flat());
  int32_t bands[kBands] = {14, 14, 14, 14, 14, 14, 14, 14, 14, 14};
  for (const auto& c : kCases) {
    equalizer.Set(c.slider, bands);
    EXPECT_EQ(equalizer.preamp_index(), c.index) << c.slider;
    EXPECT_TRUE(equalizer.is_flat());
  }
  for (int32_t& band : bands) {
    band = 13;
    equalizer.Set(13, bands);
    EXPECT_FALSE(equalizer.is_flat());
    band = 14;
  }
}

}  // namespace
}  // namespace kelvo::test
