// The file side of the plug-in, and its life.
#include <gtest/gtest.h>

#include <cstring>

#include "base/memory/heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::MemoryReader;
using test::ReadMedia;
using test::Utf8;
using test::Wide;

// kbit/s, from the identification header in the first page.
uint32_t BitRate(const std::vector<char>& file) {
  uint32_t bits_per_second;
  memcpy(&bits_per_second, file.data() + 48, 4);
  return bits_per_second / 1000;
}

class BarePlugin final : public InputPlugin {};

// All that an input plug-in answers with a number.
int64_t Answers(InputPlugin& plugin) {
  return int64_t{plugin.GetLengthMs()} | plugin.GetPositionMs(1, 2) | plugin.Reserved7() |
         plugin.Reserved8() | plugin.SeekMs(1) | plugin.Stop() | plugin.TogglePause() |
         plugin.Play() | plugin.Close(1, 2) | plugin.Open(nullptr, 0);
}

TEST(OggVorbisPluginTest, IsHarmlessWithoutAFileAsTheBaseIsAlways) {
  BarePlugin bare;
  OggVorbisPlugin plugin(SystemFiles());
  EXPECT_EQ(plugin.GetState(), kStopped);
  MediaInfo info;
  memset(&info, 0x55, sizeof(info));
  const MediaInfo before = info;
  for (InputPlugin* each : {static_cast<InputPlugin*>(&bare), static_cast<InputPlugin*>(&plugin)}) {
    wchar_t text[kMaxText] = L"kept";
    each->Reserved0();
    EXPECT_EQ(Answers(*each), 0);
    EXPECT_EQ(each->GetDisplayTitle(nullptr), 0);
    EXPECT_EQ(each->GetDisplayTitle(text), 0);
    EXPECT_EQ(Utf8(text), each == &bare ? "kept" : "");
    each->GetMediaInfo(&info);
    EXPECT_EQ(memcmp(&info, &before, sizeof(info)), 0);
    each->SetState(3);
    EXPECT_EQ(each->GetState(), 3u);
    each->SetState(kStopped);
  }
  plugin.GetMediaInfo(nullptr);
  bare.Destroy(1);
}

TEST(OggVorbisPluginTest, OpensDescribesAndCloses) {
  MemoryReader reader(test::WithComments(
      ReadMedia("tone_8000_stereo.ogg"),
      {"ARTIST=Ada", "TITLE=Blue", "GENRE=" + std::string(40, 'g'), "TRACKNUMBER=12/14"}));
  reader.close_result = 42;
  OggVorbisPlugin plugin(SystemFiles());
  plugin.SetReader(&reader);
  ASSERT_EQ(plugin.Open(Wide(std::string(259, 'p')), 7), 1);
  EXPECT_EQ(reader.mode, 7u);
  wchar_t title[kMaxText];
  EXPECT_EQ(plugin.GetDisplayTitle(title), 1);
  EXPECT_EQ(Utf8(title), "Ada - Blue");
  MediaInfo info;
  memset(&info, 0x55, sizeof(info));
  plugin.GetMediaInfo(&info);
  EXPECT_EQ(Utf8(info.genre), std::string(31, 'g'));
  EXPECT_EQ(info.genre[31], 0) << "all of the field is cleared";
  EXPECT_EQ(info.sample_rate, 8000u);
  EXPECT_EQ(info.bit_rate, BitRate(ReadMedia("tone_8000_stereo.ogg")));
  EXPECT_GT(info.bit_rate, 8u);
  EXPECT_EQ(info.stereo, 1u);
  EXPECT_EQ(info.track, 12);
  EXPECT_EQ(plugin.GetLengthMs(), 2000);
  // All of it without an output.
  EXPECT_EQ(plugin.SeekMs(1999), 1);
  EXPECT_EQ(plugin.Play() + plugin.TogglePause() + plugin.GetPositionMs(0, 0) + plugin.Stop(), 0);
  reader.refuse_release = true;
  EXPECT_EQ(plugin.Close(1, 2), 0);
  EXPECT_EQ(plugin.GetLengthMs(), 2000) << "kept open";
  reader.refuse_release = false;
  EXPECT_EQ(plugin.Close(3, 4), 42);
  EXPECT_EQ(plugin.GetLengthMs(), 0);
  EXPECT_EQ(plugin.Close(5, 6), 0);
  EXPECT_EQ(reader.log, "open release1,2 release3,4 close close release5,6 ");
}

// A seek of the reader's that fails is told to the decoder so that the file stays one that can be
// seeked in; any other answer is no failure at all.
TEST(OggVorbisPluginTest, OpensWhateverTheReaderAnswersToASeek) {
  for (const int64_t answer : {kSeekFailed, int64_t{-1}, INT64_MIN}) {
    MemoryReader reader(ReadMedia("tone_8000_mono.ogg"));
    reader.failing_seeks = 1;
    reader.failed_seek = answer;
    OggVorbisPlugin plugin(SystemFiles());
    plugin.SetReader(&reader);
    EXPECT_EQ(plugin.Open(L"x.ogg", 0), 1) << answer;
    EXPECT_EQ(plugin.GetLengthMs(), 2000) << answer;
    plugin.Close(0, 0);
  }
}

TEST(OggVorbisPluginTest, RefusesWhatCannotBePlayed) {
  const std::vector<char> good = ReadMedia("tone_8000_mono.ogg");
  const struct {
    const char* name;
    std::vector<char> bytes;
    bool fail_open;
    size_t path_length;
    const char* log;
  } kCases[] = {
      {"reader cannot open", good, true, 5, "open "},
      {"no Vorbis", {'x'}, false, 5, "open close "},
      {"total length 0", test::WithoutLength(good), false, 5, "open close close "},
      {"path of 260 characters", good, false, 260, ""},
  };
  for (const auto& c : kCases) {
    MemoryReader reader(c.bytes);
    reader.fail_open = c.fail_open;
    OggVorbisPlugin plugin(SystemFiles());
    plugin.SetReader(&reader);
    EXPECT_EQ(plugin.Open(Wide(std::string(c.path_length, 'p')), 0), 0) << c.name;
    EXPECT_EQ(reader.log, c.log) << c.name;
    EXPECT_EQ(plugin.Play(), 0) << c.name;
  }
  OggVorbisPlugin plugin(SystemFiles());
  EXPECT_EQ(plugin.Open(L"x.ogg", 0), 0) << "no reader";
  EXPECT_EQ(plugin.Open(nullptr, 0), 0);
}

// By path, without a reader, and opened: 64 bits of the length and "more than one channel" against
// 32 bits of it and "two channels".
TEST(OggVorbisPluginTest, TellsWhatTheFileSays) {
  const std::vector<char> mono = ReadMedia("tone_8000_mono.ogg");
  const struct {
    const char* texts;  // display title, album, artist, title, genre
    uint32_t rate, stereo;
    int32_t track;
    uint32_t length_ms;
    std::vector<char> bytes;
    uint32_t opened_stereo;
    int32_t opened_length_ms;
  } kCases[] = {
      {"A - T|L|A|T|G", 8000, 1, 7, 2000,
       test::WithComments(ReadMedia("tone_8000_stereo.ogg"),
                          {"ARTIST=A", "TITLE=T", "ALBUM=L", "GENRE=G", "tracknumber=7"}),
       1, 2000},
      {"file||||", 44100, 1, 0, 2000, ReadMedia("tone_44100_6ch.ogg"), 0, 2000},
      {"file||||", 8000, 0, 0, 2000, mono, 0, 2000},
      {"file||||", 8000, 0, 0, 13025, ReadMedia("chained.ogg"), 0, 13025},
      {"file||||", 8000, 0, 0, 536872912, test::Repeated(mono, 2, (int64_t{1} << 32) + 16000), 0,
       2000},
      {"file||||", 8000, 0, 0, 2147485648u, test::Repeated(mono, 2, (int64_t{1} << 34) + 16000), 0,
       2000},
      {"file||||", 8000, 0, 0, UINT32_MAX, test::Repeated(mono, 2, int64_t{1} << 45), 0, 0},
  };
  test::MemoryFiles files;
  OggVorbisPlugin plugin(files);
  for (const auto& c : kCases) {
    SCOPED_TRACE(&c - kCases);
    const wchar_t* const path = L"\\m\\file.ogg";
    files.Put("\\m\\file.ogg", std::string(c.bytes.begin(), c.bytes.end()));
    wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
    MediaInfo info = {};
    uint32_t length = 0;
    uint32_t ignored = 5;
    ASSERT_EQ(plugin.GetFileInfo(path, display, album, &info, &length, &ignored, artist, title), 1);
    EXPECT_EQ(Utf8(display) + "|" + Utf8(album) + "|" + Utf8(artist) + "|" + Utf8(title) + "|" +
                  Utf8(info.genre),
              c.texts);
    EXPECT_EQ(info.sample_rate, c.rate);
    EXPECT_EQ(info.bit_rate, BitRate(c.bytes));
    EXPECT_EQ(info.stereo, c.stereo);
    EXPECT_EQ(info.track, c.track);
    EXPECT_EQ(length, c.length_ms);
    EXPECT_EQ(ignored, 5u);
    EXPECT_EQ(
        plugin.GetFileInfo(path, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
    MemoryReader reader(c.bytes);
    plugin.SetReader(&reader);
    EXPECT_EQ(plugin.Open(path, 0), c.opened_length_ms > 0);
    EXPECT_EQ(plugin.GetLengthMs(), c.opened_length_ms);
    info.stereo = 0;
    plugin.GetMediaInfo(&info);
    EXPECT_EQ(info.stereo, c.opened_stereo);
    plugin.Close(0, 0);
  }
  for (const std::string other : {"opus.ogg", "flac.ogg", "speex.ogg"}) {
    const std::vector<char> bytes = ReadMedia(other);
    files.Put("\\m\\" + other, std::string(bytes.begin(), bytes.end()));
  }
  for (const char* path :
       {"\\m\\opus.ogg", "\\m\\flac.ogg", "\\m\\speex.ogg", "\\m\\none.ogg", ""}) {
    uint32_t length = 9;
    EXPECT_EQ(plugin.GetFileInfo(Wide(path), nullptr, nullptr, nullptr, &length, nullptr, nullptr,
                                 nullptr),
              0);
    EXPECT_EQ(length, 9u);
  }
  EXPECT_EQ(files.open_now, 0);
}

TEST(OggVorbisPluginTest, IsABarePluginAfterItsDestruction) {
  MemoryReader reader(ReadMedia("tone_8000_mono.ogg"));
  test::RecordingOutput output;
  for (const bool played : {false, true}) {
    reader.log.clear();
    OggVorbisPlugin* plugin = HeapNew<OggVorbisPlugin>(SystemFiles());
    OggVorbisInput* volatile host_pointer = plugin;
    plugin->SetReader(&reader);
    plugin->SetOutput(&output);
    plugin->SetHostContext(77);
    ASSERT_EQ(plugin->Open(L"x.ogg", 0), 1);
    if (played) {
      ASSERT_EQ(plugin->Play(), 1);
      while (plugin->GetState() != kStopped) SleepMs(1);  // to its end; nobody calls Stop
    }
    host_pointer->Destroy(0);
    EXPECT_EQ(reader.log, "open close ") << played;
    const auto field = [&](size_t word) {
      return test::RawField<uintptr_t>(plugin, word * sizeof(void*));
    };
    EXPECT_EQ(field(1), 77u);
    EXPECT_EQ(field(2), reinterpret_cast<uintptr_t>(&output));
    EXPECT_EQ(field(3), reinterpret_cast<uintptr_t>(&reader));
    EXPECT_EQ(static_cast<uint32_t>(field(4)), kStopped);
    EXPECT_EQ(host_pointer->Open(L"x.ogg", 0), 0);
    EXPECT_EQ(host_pointer->GetFileInfo(L"x.ogg", nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr),
              0);
    host_pointer->SetNotifyWindow(nullptr);
    host_pointer->Destroy(0);
    host_pointer->Destroy(1);
  }
  HeapNew<OggVorbisPlugin>(SystemFiles())->Destroy(1);  // the leak checker looks
}

TEST(FramesToMsTest, TruncatesAndSaturates) {
  EXPECT_EQ(SaturatedMs(FramesToMs(8008, 8000)), 1000) << "1001 with wider intermediates";
  EXPECT_EQ(SaturatedMs(FramesToMs(44099, 44100)), 999);
  EXPECT_EQ(SaturatedMs(FramesToMs(5, 0)), 0);
  EXPECT_EQ(SaturatedMs(FramesToMs(4294967295.0, 1)), INT32_MAX);
}

}  // namespace
}  // namespace kelvo
