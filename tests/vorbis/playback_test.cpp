// What is heard of real files. What the operations and the thread do to each other:
// tests/schedules.
#include <gtest/gtest.h>

#include <string.h>
#include <functional>

#include <memory>
#include <random>

#include "base/sync/thread.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "tests/support/end_messages.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/recording_output.h"

namespace kelvo {
namespace {

using test::DecodeDirectly;
using test::EndMessages;
using test::MemoryReader;
using test::ReadMedia;
using test::RecordingOutput;

class PlaybackTest : public ::testing::Test {
 protected:
  void Open(const std::string& name) { OpenBytes(ReadMedia(name)); }
  void OpenBytes(const std::vector<char>& bytes) {
    file_ = bytes;
    reader_ = std::make_unique<MemoryReader>(file_);
    plugin_.SetReader(reader_.get());
    plugin_.SetOutput(&output_);
    plugin_.SetNotifyWindow(ends_.window());
    ASSERT_EQ(plugin_.Open(L"x.ogg", 0), 1);
  }
  void TearDown() override {
    plugin_.Stop();
    ExpectClear(3);
    plugin_.Close(0, 0);
  }
  // Plays on to the end, and hears the file from there on.
  void HearRestFrom(int64_t frame) {
    output_.SetHold(false);
    ends_.WaitForNext();
    EXPECT_TRUE(output_.pcm() == DecodeDirectly(file_, frame));
    EXPECT_EQ(plugin_.GetState(), kStopped);
    ExpectClear(4);
  }
  // So many of seek pending, run output, stop request and seek base, where a host reads them.
  void ExpectClear(size_t fields) {
    static const uint32_t kClear[4] = {};
    const OggVorbisInput& object = plugin_;
    if (sizeof(void*) == 4) {
      EXPECT_EQ(memcmp(reinterpret_cast<const char*>(&object) + 632, kClear, fields * 4), 0);
    }
  }

  EndMessages ends_;
  std::vector<char> file_;
  std::unique_ptr<MemoryReader> reader_;
  RecordingOutput output_;
  OggVorbisPlugin plugin_{SystemFiles()};
};

TEST_F(PlaybackTest, PlaysEveryFormatAsTheDecoderGivesIt) {
  for (const char* channels : {"mono", "stereo", "6ch"}) {
    const struct {
      int rate;
      const char* buffers;
    } kRates[] = {{8000, "8x4096"},  {11025, "8x4096"},  {11026, "8x8192"},
                  {22050, "8x8192"}, {22051, "8x16384"}, {44100, "8x16384"}};
    for (const auto& r : kRates) {
      if (channels[0] != 'm' && r.rate % 11025 != 0) continue;
      const std::string name = "tone_" + std::to_string(r.rate) + "_" + channels + ".ogg";
      SCOPED_TRACE(name);
      Open(name);
      ASSERT_EQ(plugin_.Play(), 1);
      ends_.WaitForNext();
      EXPECT_EQ(plugin_.GetState(), kStopped);
      const std::string count = channels[0] == 'm' ? "1" : channels[0] == 's' ? "2" : "6";
      EXPECT_EQ(output_.format(),
                std::string(r.buffers) + " " + count + "ch " + std::to_string(r.rate) + "Hz 16bit");
      EXPECT_TRUE(output_.pcm() == DecodeDirectly(file_));
      plugin_.Stop();
      plugin_.Close(0, 0);
    }
  }
  EXPECT_EQ(output_.calls().find("BAD"), std::string::npos);
}

TEST_F(PlaybackTest, PlaysFromWhereItWasSoughtTo) {
  Open("tone_44100_stereo.ogg");
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  output_.WaitUntilFull();
  EXPECT_EQ(plugin_.SeekMs(2000), 0) << "the end itself";
  EXPECT_EQ(plugin_.SeekMs(INT32_MAX), 0);
  // All leave more than the ring holds: the thread does not come to the end of the file.
  for (int32_t ms : {1100, 0, 777, -5, 1}) {
    ASSERT_EQ(plugin_.SeekMs(ms), 1) << ms;
    EXPECT_EQ(plugin_.GetPositionMs(3, 4), ms < 0 ? 0 : ms == 777 ? 776 : ms == 1 ? 0 : ms) << ms;
    EXPECT_EQ(output_.last_words(), "3,4");
  }
  ASSERT_EQ(plugin_.SeekMs(1234), 1);
  HearRestFrom(44100LL * 1234 / 1000);
  EXPECT_EQ(plugin_.GetState(), kStopped);
  EXPECT_EQ(plugin_.GetPositionMs(0, 0), 766) << "what was played since";
}

TEST_F(PlaybackTest, SeeksAndCountsBeyond32Bits) {
  OpenBytes(test::Repeated(ReadMedia("tone_44100_mono.ogg"), 60));
  EXPECT_EQ(plugin_.GetLengthMs(), 120000);
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  for (int32_t ms : {48700, 97500, 119000}) {
    ASSERT_EQ(plugin_.SeekMs(ms), 1);
    EXPECT_EQ(plugin_.GetPositionMs(0, 0), ms);
  }
  HearRestFrom(44100 * 119);
}

TEST_F(PlaybackTest, ADecoderErrorEndsPlaybackWithTheMessage) {
  OpenBytes(test::WithoutPage(ReadMedia("sample.ogg"), 4));
  const size_t decodable = DecodeDirectly(file_).size();
  ASSERT_GT(decodable, 0u);
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  ends_.WaitForNext();
  plugin_.Stop();
  EXPECT_EQ(output_.calls(), "open close reset ") << "nothing of it is drained";
  EXPECT_EQ(output_.writes(), decodable / 16384)
      << "nor is the buffer written that it broke off in";
  EXPECT_EQ(ends_.count(), 0);
}

TEST_F(PlaybackTest, SurvivesAStorm) {
  Open("chained.ogg");
  std::mt19937 random(1);
  int starts = 0;
  for (int round = 0; round < 5000; ++round) {
    const std::function<void()> operations[] = {
        [&] {
          if (plugin_.GetState() == kStopped) plugin_.SeekMs(0);
          starts += plugin_.Play();
        },
        [&] { plugin_.TogglePause(); },
        [&] { plugin_.SeekMs(static_cast<int32_t>(random() % 4100)); },
        [&] {
          plugin_.Stop();
          plugin_.SetState(kStopped);
        },
        [&] {
          plugin_.GetPositionMs(0, 0);
          wchar_t title[kMaxText];
          MediaInfo info = {};
          ASSERT_EQ(plugin_.GetDisplayTitle(title), 1);
          plugin_.GetMediaInfo(&info);
        },
    };
    operations[random() % std::size(operations)]();
    if (random() % 64 == 0) SleepMs(1);
  }
  // Nothing is stuck: from here the file plays to its end, once, with one message.
  plugin_.Stop();
  plugin_.SetState(kStopped);
  EXPECT_LE(ends_.count(), starts) << "one message at most for each start";
  ends_.Clear();
  ASSERT_EQ(plugin_.SeekMs(0), 1);
  ASSERT_EQ(plugin_.Play(), 1);
  HearRestFrom(0);
  EXPECT_EQ(ends_.count(), 0);
}

}  // namespace
}  // namespace kelvo
