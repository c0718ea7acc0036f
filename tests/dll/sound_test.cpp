// What the DLL makes of sound, to the last bit: loops that are written for one processor are in no
// other build.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "kelvo/ogg_vorbis_input.h"
#include "tests/effects/signals.h"
#include "tests/oracles/effects_model.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/recording_output.h"

namespace kelvo {
namespace {

using test::CallSlot;

TEST(SoundTest, EffectsAreTheReferencesInBlocksOfAnyLength) {
  const test::LoadedLibrary library;
  void* const effects = library.Get(kFeatureEffects);
  test::ReferenceEffects reference;
  std::mt19937 random(9);
  for (const test::Signal& signal : test::AllSignals(2000)) {
    for (int round = 0; round < 60; ++round) {
      int32_t sliders[10];
      for (int32_t& slider : sliders) slider = static_cast<int32_t>(random() % 30) - 1;
      const auto preamp = static_cast<int32_t>(random() % 28), mode = round % 5;
      CallSlot<void, int32_t, const int32_t*>(effects, 4, preamp, sliders);
      CallSlot<void, int32_t>(effects, 1, mode);
      reference.SetEqualizer(preamp, sliders);
      reference.SetBassMode(mode);
      const size_t frames = 1 + random() % 300;
      const auto from = signal.samples.begin() + static_cast<ptrdiff_t>(random() % 1700 * 2);
      std::vector<int16_t> got(from, from + static_cast<ptrdiff_t>(frames * 2)), want = got;
      int16_t* samples = got.data();
      const auto bytes = static_cast<int32_t>(frames * 4);
      EXPECT_EQ((CallSlot<int32_t, int16_t**, int32_t>(effects, 5, &samples, bytes)), bytes);
      reference.ProcessEqualizer(want.data(), bytes);
      CallSlot<void, int16_t**, int32_t>(effects, 2, &samples, bytes);
      reference.ProcessBass(want.data(), bytes);
      ASSERT_EQ(got, want) << signal.name << ", round " << round << ", " << frames << " frames";
    }
  }
}

TEST(SoundTest, FilesOfEveryFormAreDecodedAsTheyAreHere) {
  const test::LoadedLibrary library;
  auto* const plugin = static_cast<OggVorbisInput*>(library.Get(kFeatureOggVorbis));
  for (const char* name : {"tone_8000_mono", "tone_11025_stereo", "tone_22050_mono",
                           "tone_22051_6ch", "tone_44100_6ch"}) {
    const std::vector<char> file = test::ReadMedia(name + std::string(".ogg"));
    test::MemoryReader reader(file);
    test::RecordingOutput output;
    test::EndMessages ends;
    plugin->SetReader(&reader);
    plugin->SetOutput(&output);
    plugin->SetNotifyWindow(ends.window());
    ASSERT_EQ(plugin->Open(L"x", 0), 1) << name;
    EXPECT_EQ(plugin->Play(), 1);
    ends.WaitForNext();
    EXPECT_TRUE(output.pcm() == test::DecodeDirectly(file)) << name;
    plugin->Stop();
    plugin->Close(0, 0);
    plugin->SetNotifyWindow(nullptr);
  }
  plugin->SetOutput(nullptr);
  plugin->SetReader(nullptr);
}

// They broke the decoder once: a page that was overwritten, and a link that could not be set up.
TEST(SoundTest, HostileFilesEndWhereverTheyAreSoughtIn) {
  const test::LoadedLibrary library;
  auto* const plugin = static_cast<OggVorbisInput*>(library.Get(kFeatureOggVorbis));
  for (const char* name : {"seek_to_overwritten_page", "link_without_codebooks"}) {
    test::MemoryReader reader(
        test::ReadMedia("../../tests/fuzz/corpus/vorbis_open/" + std::string(name)));
    test::RecordingOutput output;
    test::EndMessages ends;
    plugin->SetReader(&reader);
    plugin->SetOutput(&output);
    plugin->SetNotifyWindow(ends.window());
    for (const int32_t ms : {100, 0, 1500, 700}) {
      ASSERT_EQ(plugin->Open(L"x", 0), 1) << name;
      for (int round = 0; round < 2; ++round) {
        plugin->SeekMs(ms);
        EXPECT_EQ(plugin->Play(), 1) << name;
        ends.WaitForNext();
        plugin->Stop();
        EXPECT_EQ(plugin->GetState(), kStopped);
      }
      plugin->Close(0, 0);
    }
    plugin->SetNotifyWindow(nullptr);
  }
  plugin->SetOutput(nullptr);
  plugin->SetReader(nullptr);
}

}  // namespace
}  // namespace kelvo
