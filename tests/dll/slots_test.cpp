// The Ogg Vorbis plug-in inside the real DLL, every slot called by its number.
#include <gtest/gtest.h>
#include <windows.h>

#include "kelvo/features.h"
#include "kelvo/input_plugin.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::CallSlot;
using test::Utf8;

// The fields as a host in another language would lay them out.
struct RawPlugin {
  void** table;
  uintptr_t host_context;
  void* output;
  void* reader;
  uint32_t state;
};

class SlotsTest : public ::testing::Test {
 protected:
  const test::LoadedLibrary library_;
  void* const object_ = library_.Get(kFeatureOggVorbis);
  RawPlugin* const plugin_ = static_cast<RawPlugin*>(object_);
};

TEST_F(SlotsTest, AnswerWithoutAFile) {
  EXPECT_EQ(plugin_->host_context, 0u);
  EXPECT_EQ(plugin_->state, 1u);
  CallSlot<void>(object_, 0);
  EXPECT_EQ(CallSlot<int32_t>(object_, 3), 0);
  EXPECT_EQ((CallSlot<int32_t, HostWord, HostWord>(object_, 4, 0, 0)), 0);
  CallSlot<void, uint32_t>(object_, 5, 3);
  EXPECT_EQ(plugin_->state, 3u);
  EXPECT_EQ(CallSlot<uint32_t>(object_, 6), 3u);
  CallSlot<void, uint32_t>(object_, 5, 1);
  EXPECT_EQ(CallSlot<uint32_t>(object_, 7), 0u);
  EXPECT_EQ(CallSlot<uint32_t>(object_, 8), 0u);
  EXPECT_EQ((CallSlot<int32_t, int32_t>(object_, 9, 5)), 0);
  EXPECT_EQ(CallSlot<int32_t>(object_, 10), 0);
  CallSlot<void>(object_, 11);
  EXPECT_EQ(CallSlot<int32_t>(object_, 12), 0);
  EXPECT_EQ((CallSlot<int32_t, HostWord, HostWord>(object_, 13, 0, 0)), 0);
  EXPECT_EQ((CallSlot<int32_t, const wchar_t*, uint32_t>(object_, 14, L"x", 0)), 0);
}

TEST_F(SlotsTest, PlayAFileAsTheDecoderGivesIt) {
  const std::vector<char> file = test::ReadMedia("sample.ogg");
  test::MemoryReader reader(file);
  test::RecordingOutput output;
  test::EndMessages ends;
  plugin_->reader = static_cast<MediaReader*>(&reader);
  ASSERT_EQ((CallSlot<int32_t, const wchar_t*, uint32_t>(object_, 14, L"\\sample.ogg", 5)), 1);
  wchar_t title[kMaxText];
  EXPECT_EQ((CallSlot<int32_t, wchar_t*>(object_, 1, title)), 1);
  EXPECT_EQ(Utf8(title), "The Ring Buffers - Eight Bars");
  MediaInfo info = {};
  CallSlot<void, MediaInfo*>(object_, 2, &info);
  EXPECT_EQ(Utf8(info.genre), "Folk");
  EXPECT_EQ(info.sample_rate, 44100u);
  EXPECT_EQ(info.track, 3);
  EXPECT_EQ(CallSlot<int32_t>(object_, 3), 8000);
  CallSlot<void, void*>(object_, 17, ends.window());
  plugin_->output = static_cast<AudioOutput*>(&output);

  output.SetHold(true);
  ASSERT_EQ(CallSlot<int32_t>(object_, 12), 1);
  output.WaitUntilFull();
  EXPECT_EQ(CallSlot<uint32_t>(object_, 6), 2u);
  CallSlot<void>(object_, 11);
  EXPECT_EQ(plugin_->state, 3u);
  ASSERT_EQ(CallSlot<int32_t>(object_, 12), 1);
  EXPECT_EQ((CallSlot<int32_t, int32_t>(object_, 9, 8000)), 0);
  ASSERT_EQ((CallSlot<int32_t, int32_t>(object_, 9, 5000)), 1);
  EXPECT_EQ((CallSlot<int32_t, HostWord, HostWord>(object_, 4, 6, 7)), 5000);
  EXPECT_EQ(output.last_words(), "6,7");
  output.SetHold(false);
  ends.WaitForNext();
  EXPECT_TRUE(output.pcm() == test::DecodeDirectly(file, 44100 * 5));
  EXPECT_EQ(CallSlot<int32_t>(object_, 10), 0);
  EXPECT_EQ((CallSlot<int32_t, HostWord, HostWord>(object_, 13, 1, 2)), 1);
  CallSlot<void, void*>(object_, 17, nullptr);
  plugin_->output = nullptr;
  plugin_->reader = nullptr;
}

TEST_F(SlotsTest, TellAboutAFileByPath) {
  wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
  MediaInfo info = {};
  uint32_t length = 0;
  EXPECT_EQ((CallSlot<int32_t, const wchar_t*, wchar_t*, wchar_t*, MediaInfo*, uint32_t*, uint32_t*,
                      wchar_t*, wchar_t*>(object_, 16, L"..\\..\\media\\sample.ogg", display, album,
                                          &info, &length, nullptr, artist, title)),
            1);
  EXPECT_EQ(Utf8(display), "The Ring Buffers - Eight Bars");
  EXPECT_EQ(Utf8(album), "Fixed Point");
  EXPECT_EQ(Utf8(artist), "The Ring Buffers");
  EXPECT_EQ(Utf8(title), "Eight Bars");
  EXPECT_EQ(length, 8000u);
  EXPECT_EQ(info.stereo, 1u);
}

}  // namespace
}  // namespace kelvo
