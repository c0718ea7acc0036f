// Every field and every sample, whatever is called in whatever order. A case is a call; the two
// objects live over all of them.
#include <gtest/gtest.h>

#include <vector>

#include "effects/effects_processor.h"
#include "tests/oracles/cases.h"
#include "tests/oracles/effects_model.h"
#include "tests/support/other_processor.h"

namespace kelvo::oracle {
namespace {

int16_t Sample(Dice& dice, uint32_t kind, int frame) {
  switch (kind) {
    case 0:
      return static_cast<int16_t>(dice.Roll(65536));
    case 1:
      return frame / 3 % 2 ? 32767 : -32768;
    case 2:
      return frame == 0 ? 32767 : 0;
    default:
      return -32768;
  }
}

TEST(Oracle, Effects) {
  FixedPointEffects object(test::g_other_processor);
  EffectsProcessor& effects = object;
  test::ReferenceEffects model;
  ForCases(10000, [&](Dice& dice) {
    const int32_t modes[] = {0, 1, 2, 3, 4, 0, 5, -1, INT32_MIN, INT32_MAX};
    const int32_t preamps[] = {0, 3, 13, 13, 14, 27, 28, -1, INT32_MIN, INT32_MAX};
    const int32_t beyond[] = {28, -1, -100, INT32_MIN, INT32_MAX};
    const int32_t lengths[] = {0, 1, 2, 3, 4, 6, 7, -1, -4, INT32_MIN};
    const uint32_t call = dice.Roll(16);
    if (call == 0) {
      const int32_t mode = dice.Of(modes);
      effects.SetBassMode(mode);
      model.SetBassMode(mode);
    } else if (call == 1) {
      model.enabled = dice.OneIn(3) ? 0 : -8;
      effects.EnableEqualizer(model.enabled);
    } else if (call == 2) {
      int32_t sliders[10];
      const uint32_t kind = dice.Roll(4);  // all in the middle, one apart, in range, any
      for (int32_t& slider : sliders) {
        slider = kind == 3 ? dice.Of(beyond) : kind == 2 ? static_cast<int32_t>(dice.Roll(28)) : 14;
      }
      if (kind == 1) sliders[dice.Roll(10)] = 13;
      const int32_t preamp = dice.Of(preamps);
      const bool none = dice.OneIn(9);
      effects.SetEqualizer(preamp, none ? nullptr : sliders);
      model.SetEqualizer(preamp, none ? nullptr : sliders);
    } else {
      const int32_t frames = static_cast<int32_t>(dice.Roll(dice.OneIn(20) ? 300 : 24));
      const int32_t bytes = dice.OneIn(4) ? dice.Of(lengths) : frames * 4;
      std::vector<int16_t> got;
      const uint32_t kinds[] = {dice.Roll(5), dice.Roll(5)};
      for (int i = 0; i < frames * 2 + 4; ++i) got.push_back(Sample(dice, kinds[i % 2], i / 2));
      std::vector<int16_t> want = got;
      int16_t* samples = got.data();
      if (call % 2 == 0) {
        effects.ProcessBass(&samples, bytes);
        model.ProcessBass(want.data(), bytes);
      } else {
        ASSERT_EQ(effects.ProcessEqualizer(&samples, bytes),
                  model.ProcessEqualizer(want.data(), bytes));
      }
      ASSERT_EQ(samples, got.data());
      ASSERT_EQ(got, want) << bytes;
    }
    // Behind the table of operations.
    ASSERT_EQ(test::DifferingOffset(reinterpret_cast<const char*>(&object) + sizeof(void*), model),
              0u);
  });
}

}  // namespace
}  // namespace kelvo::oracle
