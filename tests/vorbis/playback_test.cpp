// The decoding thread and the operations that steer it.
#include <gtest/gtest.h>

#include <string.h>
#include <functional>

#include <memory>
#include <mutex>
#include <random>

#include "base/sync/thread.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "kelvo/messages.h"
#include "tests/support/end_messages.h"
#include "tests/support/faults.h"
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

// Sees every change of the state, as a host's own table does.
class ObservedPlugin final : public OggVorbisPlugin {
 public:
  ObservedPlugin() : OggVorbisPlugin(SystemFiles()) {}
  void SetState(uint32_t state) noexcept override {
    {
      std::lock_guard<std::mutex> guard(mutex_);
      states_ += std::to_string(state);
    }
    OggVorbisPlugin::SetState(state);
  }
  std::string states() {
    std::lock_guard<std::mutex> guard(mutex_);
    return states_;
  }

 private:
  std::mutex mutex_;
  std::string states_;
};

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
  // Plays to the end, and hears the file from there on.
  void HearFrom(int64_t frame) {
    ASSERT_EQ(plugin_.Play(), 1);
    HearRestFrom(frame);
  }
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
  // For ever, when others come.
  void WaitForCalls(const std::string& calls) {
    while (output_.calls() != calls) SleepMs(1);
  }
  static size_t Count(const std::string& text, const std::string& word) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) ++count;
    return count;
  }

  EndMessages ends_;
  std::vector<char> file_;
  std::unique_ptr<MemoryReader> reader_;
  RecordingOutput output_;
  ObservedPlugin plugin_;
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

TEST_F(PlaybackTest, PausesAndResumes) {
  Open("tone_8000_mono.ogg");
  EXPECT_EQ(plugin_.TogglePause(), 0);
  EXPECT_EQ(output_.calls(), "") << "nothing while stopped";
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  EXPECT_EQ(plugin_.Play(), 0) << "already playing";
  plugin_.TogglePause();
  EXPECT_EQ(plugin_.GetState(), kPaused);
  plugin_.TogglePause();
  EXPECT_EQ(plugin_.GetState(), kPlaying);
  plugin_.TogglePause();
  EXPECT_EQ(plugin_.Play(), 1) << "resumes";
  EXPECT_EQ(plugin_.GetState(), kPlaying);
  EXPECT_EQ(output_.calls(), "open pause run pause run ");
  HearRestFrom(-1);
  EXPECT_EQ(plugin_.states(), "232321") << "every change passes through the slot";
}

TEST_F(PlaybackTest, ASeekWhilePausedDoesNotStartTheOutput) {
  Open("tone_44100_stereo.ogg");
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  output_.WaitUntilFull();
  plugin_.TogglePause();
  ASSERT_EQ(plugin_.SeekMs(500), 1);
  WaitForCalls("open pause reset reset ");  // by the host's thread and the plug-in's own
  output_.WaitUntilFull();
  plugin_.TogglePause();
  ASSERT_EQ(plugin_.SeekMs(600), 1);
  WaitForCalls("open pause reset reset run reset reset run ");
  HearRestFrom(44100 * 6 / 10);
}

TEST_F(PlaybackTest, ASeekDiscardsWhatWasDecodedBefore) {
  Open("sample.ogg");
  const std::vector<char> want = DecodeDirectly(file_, 44100 * 7);
  for (int round = 0; round < 20; ++round) {
    ASSERT_EQ(plugin_.SeekMs(0), 1);
    output_.SetHold(true);
    ASSERT_EQ(plugin_.Play(), 1);
    if (round % 4 != 0) SleepMs(1);  // wherever in its buffers the thread is now
    ASSERT_EQ(plugin_.SeekMs(7000), 1);
    output_.SetHold(false);
    ends_.WaitForNext();
    EXPECT_TRUE(output_.pcm() == want) << round;
    plugin_.Stop();
  }
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

TEST_F(PlaybackTest, ANewFileStartsAtItsBeginning) {
  Open("tone_44100_stereo.ogg");
  ASSERT_EQ(plugin_.SeekMs(1500), 1);
  plugin_.Close(0, 0);
  Open("tone_8000_mono.ogg");
  EXPECT_EQ(plugin_.GetPositionMs(0, 0), 0);
  ASSERT_EQ(plugin_.Play(), 1);
  ends_.WaitForNext();
  EXPECT_EQ(output_.calls(), "reset open close ") << "no seek is pending any more";
}

TEST_F(PlaybackTest, StopsWhereverTheThreadStands) {
  Open("tone_44100_stereo.ogg");
  output_.SetHold(true);
  for (int round = 0; round < 5; ++round) {
    ASSERT_EQ(plugin_.SeekMs(0), 1);
    ASSERT_EQ(plugin_.Play(), 1);
    if (round % 2 == 0) output_.WaitUntilFull();
    EXPECT_EQ(plugin_.Stop(), 0);
    EXPECT_EQ(plugin_.GetState(), kStopped);
  }
  EXPECT_EQ(Count(output_.calls(), "open "), 5u);
  EXPECT_EQ(Count(output_.calls(), "close "), 5u);
  EXPECT_EQ(ends_.count(), 0) << "a stop is no end of playback";
  output_.SetHold(false);
  output_.ClearCalls();
  ASSERT_EQ(plugin_.SeekMs(0), 1);
  EXPECT_EQ(plugin_.Stop(), 0);
  HearFrom(-1);
  EXPECT_EQ(output_.calls(), "reset open close ") << "nor of the seek";
}

TEST_F(PlaybackTest, DoesNotStartWithoutMemoryOrOutput) {
  Open("tone_8000_mono.ogg");
  {
    test::HeapFaults faults(0);
    EXPECT_EQ(plugin_.Play(), 0) << "no thread";
  }
  EXPECT_EQ(plugin_.states() + output_.calls(), "");
  plugin_.Stop();
  plugin_.Stop();
  EXPECT_EQ(output_.calls(), "reset ") << "the first stop resets the output even so";
  output_.ClearCalls();
  output_.fail_open = true;
  EXPECT_EQ(plugin_.Play(), 1);
  plugin_.Stop();
  EXPECT_EQ(plugin_.GetState(), kStopped);
  EXPECT_EQ(output_.calls(), "open close reset ");
  EXPECT_EQ(ends_.count(), 0);
}

TEST_F(PlaybackTest, ADecoderErrorEndsPlaybackWithTheMessage) {
  OpenBytes(test::WithoutPage(ReadMedia("sample.ogg"), 4));
  const size_t decodable = DecodeDirectly(file_).size();
  ASSERT_GT(decodable, 0u);
  output_.SetHold(true);
  ASSERT_EQ(plugin_.Play(), 1);
  ends_.WaitForNext();
  plugin_.Stop();
  EXPECT_EQ(plugin_.states(), "21");
  EXPECT_EQ(output_.calls(), "open close reset ") << "nothing of it is drained";
  EXPECT_EQ(output_.writes(), decodable / 16384)
      << "nor is the buffer written that it broke off in";
  EXPECT_EQ(ends_.count(), 0);
}

TEST_F(PlaybackTest, ASeekDuringTheDrainLeavesTheStateAndStillSendsTheMessage) {
  Open("tone_8000_mono.ogg");
  ASSERT_EQ(plugin_.SeekMs(1950), 1);
  output_.never_drained = true;
  ASSERT_EQ(plugin_.Play(), 1);
  WaitForCalls("reset open reset run run ");
  ASSERT_EQ(plugin_.SeekMs(100), 1);
  ends_.WaitForNext();
  EXPECT_EQ(output_.calls(), "reset open reset run run reset ") << "left open";
  EXPECT_EQ(plugin_.states(), "2");
  EXPECT_EQ(plugin_.Play(), 0) << "it counts as playing";
  plugin_.Stop();
  EXPECT_EQ(plugin_.states(), "2");
  plugin_.SetState(kStopped);
  output_.never_drained = false;
  HearFrom(800);
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
  HearFrom(0);
  EXPECT_EQ(ends_.count(), 0);
}

}  // namespace
}  // namespace kelvo
