#include "eq/presets_feature.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/faults.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

const uint8_t kSetting[] = {0, 1, 2, 14, 27, 255, 6, 7, 8, 9, 10};

class Prompts final : public PresetPrompts {
  bool AskName(WindowHandle, wchar_t (&answer)[kTextCapacity]) noexcept override {
    CopyWide(answer, kTextCapacity, L"Rock");
    return true;
  }
  bool ConfirmOverwrite(WindowHandle) noexcept override { return true; }
};

class PresetsFeatureTest : public ::testing::Test {
 protected:
  PresetsFeatureTest() { files_.PutFolder("\\V\\presets"); }
  std::string Name(int32_t index) {
    wchar_t name[kMaxText] = L"before";
    feature_.GetPresetName(index, name);
    return Utf8(name);
  }

  test::MemoryFiles files_;
  Prompts prompts_;
  PresetsFeature feature_{files_, prompts_};
};

TEST_F(PresetsFeatureTest, SavesNothingWhereItCannot) {
  const std::string base = "\\" + std::string(242, 'b');  // 260 characters with the name
  files_.PutFolder(base + "\\presets");
  EXPECT_EQ(feature_.SavePreset(kSetting, Wide(base), nullptr), 0);
  EXPECT_EQ(feature_.SavePreset(kSetting, L"\\none", nullptr), 0);
  EXPECT_EQ(feature_.SavePreset(nullptr, L"\\V", nullptr), 0);
}

TEST_F(PresetsFeatureTest, ListsAtMostTwoHundred) {
  for (int i = 0; i < 201; ++i) files_["\\V\\presets\\" + std::to_string(i) + ".eqf"];
  EXPECT_EQ(feature_.ListPresets(L"\\V"), 200);
  EXPECT_EQ(feature_.ListPresets(L"\\V"), 200);
  EXPECT_EQ(Name(199) + Name(200), "199");
  EXPECT_EQ(feature_.FindPreset(L"200"), -1);
  EXPECT_EQ(feature_.FindPreset(nullptr), -1);
  feature_.Destroy(0);
  feature_.Destroy(0);
  EXPECT_EQ(Name(0), "");
  auto* made = HeapNew<PresetsFeature>(files_, prompts_);
  EXPECT_EQ(made->ListPresets(L"\\V"), 200);
  made->Destroy(1);  // the leak checker looks
}

TEST_F(PresetsFeatureTest, WithoutMemoryTheRestIsLeftOut) {
  for (const char* name : {"a", "b", "c"}) files_["\\V\\presets\\" + std::string(name) + ".eqf"];
  for (int successes = 0; successes <= 3; ++successes) {
    feature_.ClearPresets();
    test::HeapFaults faults(successes);
    EXPECT_EQ(feature_.ListPresets(L"\\V"), successes);
    EXPECT_EQ(faults.triggered(), successes < 3);
  }
}

// Those that the build makes for the host, from the real folder.
TEST_F(PresetsFeatureTest, TheShippedPresetsAreReadableAndDifferent) {
  PresetsFeature feature(SystemFiles(), prompts_);
  ASSERT_GE(feature.ListPresets(L"."), 10);
  std::set<std::string> settings;
  for (const char* name : {"flat", "rock", "pop", "jazz", "classical", "dance", "vocal", "bass",
                           "treble", "loudness"}) {
    uint8_t setting[kEqualizerSettingBytes];
    ASSERT_EQ(feature.ReadPreset(feature.FindPreset(Wide(name)), setting, L"."), 1) << name;
    for (uint8_t value : setting) EXPECT_LE(value, 27) << name;
    settings.insert(std::string(setting, setting + sizeof(setting)));
  }
  EXPECT_EQ(settings.size(), 10u);
  EXPECT_EQ(settings.count('\x1B' + std::string(10, '\x0E')), 1u) << "flat, with its headroom";
}

}  // namespace
}  // namespace kelvo
