// What the DLL decodes, to the last bit: loops that are written for one processor are in no other
// build.
#include <gtest/gtest.h>

#include <string>

#include "kelvo/ogg_vorbis_input.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/recording_output.h"

namespace kelvo {
namespace {

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
