// Real files through the plug-in and the platform's stand-ins, into a recording.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "effects/effects_processor.h"
#include "input/wma/wma_input_plugin.h"
#include "tests/effects/reference_effects.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/end_messages.h"
#include "tests/support/media_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

// The library's effects, and a copy of each block from before them.
class CopyingEffects final : public EffectsProcessor {
 public:
  std::vector<int16_t> before;
  size_t last_block = 0;  // where it begins

  void Destroy(uint32_t) noexcept override {}
  void SetBassMode(int32_t mode) noexcept override { effects_.SetBassMode(mode); }
  void EnableEqualizer(int32_t enabled) noexcept override { effects_.EnableEqualizer(enabled); }
  void SetEqualizer(int32_t preamp, const int32_t* bands) noexcept override {
    effects_.SetEqualizer(preamp, bands);
  }
  int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override {
    last_block = before.size();
    before.insert(before.end(), *samples, *samples + bytes / 2);
    return effects_.ProcessEqualizer(samples, bytes);
  }
  void ProcessBass(int16_t** samples, int32_t bytes) noexcept override {
    effects_.ProcessBass(samples, bytes);
  }

 private:
  FixedPointEffects effects_{SystemEffectsPlatform()};
};

class WmaPlaybackTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(plugin.Start(GetModuleHandleW(nullptr), effects));
    ASSERT_TRUE(plugin.available());
    plugin.SetOwnerWindow(messages.window());
  }
  void TearDown() override {
    plugin.ShutDown(false);
    for (const std::wstring& recording : recordings_) DeleteFileW(recording.c_str());
  }

  void Record(const std::wstring& path, bool fast) {
    UseSink(path.c_str(), fast);
    recordings_.push_back(path);
  }

  bool Open(const char* name) {
    wchar_t path[MAX_PATH];
    return GetFullPathNameW(test::Wide(test::MediaPath(name)), MAX_PATH, path, nullptr) != 0 &&
           plugin.Open(path, 0) != 0;
  }

  test::EndMessages messages;
  CopyingEffects effects;
  WmaInputPlugin plugin{SystemFiles()};

 private:
  std::vector<std::wstring> recordings_;
};

TEST_F(WmaPlaybackTest, EveryBlockReachesTheDeviceThroughTheEffects) {
  const struct {
    const char* name;
    const char* file;
    bool equalizer;
    int32_t bass;
  } kCases[] = {
      {"untouched", "sample.wma", false, 0},
      {"equalizer", "sample_v1.wma", true, 0},
      {"equalizer and bass", "sample.wma", true, 2},
      {"bass, the equalizer's memory stays", "sample.wma", false, 2},
  };
  const int32_t kBands[10] = {0, 14, 27, 0, 14, 27, 0, 14, 27, 0};
  test::ReferenceEffects reference;
  reference.SetEqualizer(10, kBands);
  effects.SetEqualizer(10, kBands);
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const std::wstring sink = L"wma_" + std::to_wstring(&c - kCases) + L".wav";
    Record(sink, true);
    effects.EnableEqualizer(c.equalizer);
    effects.SetBassMode(c.bass);
    effects.before.clear();
    ASSERT_TRUE(Open(c.file));
    EXPECT_EQ(plugin.GetState(), kStopped);
    EXPECT_NEAR(plugin.GetLengthMs(), 8000, 400);
    ASSERT_EQ(plugin.Play(), 1);
    EXPECT_EQ(plugin.GetState(), kPlaying);
    messages.WaitForNext();
    EXPECT_EQ(plugin.GetState(), kPlaying) << "until the host stops";
    EXPECT_EQ(plugin.Stop(), S_OK);
    EXPECT_EQ(plugin.GetState(), kStopped);

    std::vector<int16_t> want = effects.before;
    ASSERT_GT(want.size(), 600000u);
    const auto bytes = static_cast<int32_t>(want.size() * sizeof(int16_t));
    reference.enabled = c.equalizer;
    reference.SetBassMode(c.bass);
    reference.ProcessEqualizer(want.data(), bytes);
    reference.ProcessBass(want.data(), bytes);
    const WavBytes heard = ReadWav(sink);
    EXPECT_TRUE(heard.ok);
    EXPECT_TRUE(heard.samples == want);

    std::vector<int16_t> seen;
    int16_t samples[kVisualisationSamples];
    while (plugin.GetVisualisation(samples)) {
      seen.insert(seen.end(), samples, samples + kVisualisationSamples);
    }
    for (size_t i = 0; i < seen.size(); ++i) {
      const size_t at = effects.last_block + 2 * i;
      ASSERT_EQ(seen[i], at < want.size() ? want[at] : 0) << i;
    }
    EXPECT_GE(seen.size(), (want.size() - effects.last_block) / 2);
    EXPECT_EQ(messages.count(), 0) << "the end is told once";
  }
}

// Stopping and starting is the plug-in's; what lies between is real here.
TEST_F(WmaPlaybackTest, ResumesWhereItPaused) {
  Record(L"wma_states.wav", false);
  ASSERT_TRUE(Open("sample.wma"));
  ASSERT_EQ(plugin.SeekMs(6000), 1);
  ASSERT_EQ(plugin.Play(), 1);
  while (plugin.GetPositionMs(0, 0) < 6100) Sleep(10);  // the test's time limit is the bound
  EXPECT_EQ(plugin.TogglePause(), S_OK);
  EXPECT_EQ(plugin.TogglePause(), 1);
  EXPECT_GE(plugin.GetPositionMs(0, 0), 6090) << "not the start";
  messages.WaitForNext();
  EXPECT_EQ(plugin.Close(0, 0), S_OK);
  EXPECT_EQ(messages.count(), 0) << "one end, none for the pause";
}

}  // namespace
}  // namespace kelvo
