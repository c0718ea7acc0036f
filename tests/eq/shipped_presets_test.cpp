// The presets that the build makes for the host, read by the library from the real folder.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "eq/presets_feature.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

TEST(ShippedPresetsTest, AreAllReadableAndDifferent) {
  PresetsFeature feature(SystemFiles(), nullptr);
  ASSERT_GE(feature.ListPresets(L"."), 10);
  std::set<std::string> settings;
  for (const char* name : {"flat", "rock", "pop", "jazz", "classical", "dance", "vocal", "bass",
                           "treble", "loudness"}) {
    SCOPED_TRACE(name);
    uint8_t setting[kEqualizerSettingBytes];
    ASSERT_EQ(feature.ReadPreset(feature.FindPreset(test::Wide(name)), setting, L"."), 1);
    for (uint8_t value : setting) EXPECT_LE(value, 27);
    settings.insert(std::string(setting, setting + sizeof(setting)));
  }
  EXPECT_EQ(settings.size(), 10u);
  const std::string flat = '\x0D' + std::string(10, '\x0E');
  EXPECT_EQ(settings.count(flat), 1u) << "flat leaves all as it is";
}

}  // namespace
}  // namespace kelvo
