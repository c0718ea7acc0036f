// The file side of the plug-in, and its life.
#include <gtest/gtest.h>

#include <cstring>

#include "base/memory/heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
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

TEST(OggVorbisPluginTest, IsHarmlessWithoutAFile) {
  OggVorbisPlugin plugin(SystemFiles());
  wchar_t text[kMaxText] = L"kept";
  MediaInfo info;
  memset(&info, 0x55, sizeof(info));
  const MediaInfo before = info;
  EXPECT_EQ(plugin.GetState(), kStopped);
  EXPECT_EQ(plugin.GetLengthMs(), 0);
  EXPECT_EQ(plugin.GetPositionMs(1, 2), 0);
  EXPECT_EQ(plugin.SeekMs(0), 0);
  EXPECT_EQ(plugin.Play(), 0);
  EXPECT_EQ(plugin.Stop(), 0);
  EXPECT_EQ(plugin.TogglePause(), 0);
  EXPECT_EQ(plugin.Close(0, 0), 0);
  EXPECT_EQ(plugin.GetDisplayTitle(nullptr), 0);
  EXPECT_EQ(plugin.GetDisplayTitle(text), 0);
  EXPECT_EQ(Utf8(text), "") << "emptied all the same";
  plugin.GetMediaInfo(&info);
  plugin.GetMediaInfo(nullptr);
  EXPECT_EQ(memcmp(&info, &before, sizeof(info)), 0);
}

TEST(OggVorbisPluginTest, OpensDescribesAndCloses) {
  MemoryReader reader(test::WithComments(
      ReadMedia("tone_8000_stereo.ogg"),
      {"ARTIST=Ada", "TITLE=Blue", "GENRE=" + std::string(40, 'g'), "TRACKNUMBER=12/14"}));
  reader.close_result = 42;
  OggVorbisPlugin plugin(SystemFiles());
  plugin.SetReader(&reader);
  ASSERT_EQ(plugin.Open(L"\\x.ogg", 7), 1);
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

TEST(OggVorbisPluginTest, TellsWhatTheFileSays) {
  const std::vector<char> mono = ReadMedia("tone_8000_mono.ogg");
  const struct {
    const char* name;
    std::vector<char> bytes;
    uint32_t stereo;
    int32_t length_ms;
  } kCases[] = {
      {"mono", mono, 0, 2000},
      {"six channels", ReadMedia("tone_8000_6ch.ogg"), 0, 2000},
      {"two links of 8000 and 44100 Hz", ReadMedia("chained.ogg"), 0, 13025},
      {"32 bits of the length",
       test::WithLength(test::Repeated(mono, 2), (int64_t{1} << 32) + 16000), 0, 2000},
  };
  for (const auto& c : kCases) {
    MemoryReader reader(c.bytes);
    OggVorbisPlugin plugin(SystemFiles());
    plugin.SetReader(&reader);
    ASSERT_EQ(plugin.Open(Wide(std::string(259, 'p')), 0), 1) << c.name;
    wchar_t title[kMaxText];
    EXPECT_EQ(plugin.GetDisplayTitle(title), 1);
    EXPECT_EQ(Utf8(title), std::string(258, 'p')) << "the file's own";
    MediaInfo info = {};
    plugin.GetMediaInfo(&info);
    EXPECT_EQ(info.stereo, c.stereo) << c.name;
    EXPECT_EQ(plugin.GetLengthMs(), c.length_ms) << c.name;
    plugin.Close(0, 0);
  }
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

TEST(OggVorbisPluginTest, TellsAboutAnyFileByPath) {
  test::MemoryFiles files;
  const std::vector<char> tagged =
      test::WithComments(ReadMedia("tone_8000_stereo.ogg"),
                         {"ARTIST=A", "TITLE=T", "ALBUM=L", "GENRE=G", "tracknumber=7"});
  const auto add = [&](const char* path, const std::vector<char>& bytes) {
    files.Put(path, std::string(bytes.begin(), bytes.end()));
  };
  add("\\m\\tagged.ogg", tagged);
  add("\\m\\six.ogg", ReadMedia("tone_44100_6ch.ogg"));
  add("\\m\\mono.ogg", ReadMedia("tone_8000_mono.ogg"));
  add("\\m\\long.ogg", test::WithLength(test::Repeated(ReadMedia("tone_8000_mono.ogg"), 2),
                                        (int64_t{1} << 34) + 16000));
  add("\\m\\endless.ogg",
      test::WithLength(test::Repeated(ReadMedia("tone_8000_mono.ogg"), 2), int64_t{1} << 45));
  add("\\m\\no.ogg", ReadMedia("opus.ogg"));
  const struct {
    const char* path;
    const char* texts;  // display title, album, artist, title, genre
    uint32_t rate, stereo;
    int32_t track;
    uint32_t length_ms;
  } kCases[] = {
      {"\\m\\tagged.ogg", "A - T|L|A|T|G", 8000, 1, 7, 2000},
      {"\\m\\six.ogg", "six||||", 44100, 1, 0, 2000},  // more than one channel counts as stereo
      {"\\m\\mono.ogg", "mono||||", 8000, 0, 0, 2000},
      {"\\m\\long.ogg", "long||||", 8000, 0, 0, 2147485648u},  // all 64 bits of the length
      {"\\m\\endless.ogg", "endless||||", 8000, 0, 0, UINT32_MAX},
  };
  OggVorbisPlugin plugin(files);
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.path);
    wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
    MediaInfo info = {};
    uint32_t length = 0;
    uint32_t ignored = 5;
    const Wide path(c.path);
    ASSERT_EQ(plugin.GetFileInfo(path, display, album, &info, &length, &ignored, artist, title), 1);
    EXPECT_EQ(Utf8(display) + "|" + Utf8(album) + "|" + Utf8(artist) + "|" + Utf8(title) + "|" +
                  Utf8(info.genre),
              c.texts);
    EXPECT_EQ(info.sample_rate, c.rate);
    EXPECT_EQ(info.bit_rate, BitRate({files[c.path].begin(), files[c.path].end()}));
    EXPECT_EQ(info.stereo, c.stereo);
    EXPECT_EQ(info.track, c.track);
    EXPECT_EQ(length, c.length_ms);
    EXPECT_EQ(ignored, 5u);
    EXPECT_EQ(
        plugin.GetFileInfo(path, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
  }
  for (const char* path : {"\\m\\none.ogg", "\\m\\no.ogg", ""}) {
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
    const struct Fields {
      void* table;
      HostWord context;
      AudioOutput* output;
      MediaReader* reader;
      uint32_t state;
    }* fields = reinterpret_cast<const Fields*>(host_pointer);
    EXPECT_EQ(fields->context, 77u);
    EXPECT_EQ(fields->output, &output);
    EXPECT_EQ(fields->reader, &reader);
    EXPECT_EQ(fields->state, kStopped);
    EXPECT_EQ(host_pointer->Open(L"x.ogg", 0), 0);
    EXPECT_EQ(host_pointer->GetFileInfo(L"x.ogg", nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr),
              0);
    host_pointer->SetNotifyWindow(nullptr);
    host_pointer->Destroy(0);
    host_pointer->Destroy(1);
  }
  OggVorbisPlugin* owned = HeapNew<OggVorbisPlugin>(SystemFiles());
  owned->Destroy(1);
}

TEST(InputPluginTest, AnswersHarmlesslyByDefault) {
  class Bare final : public InputPlugin {
  } plugin;
  wchar_t text[] = L"kept";
  MediaInfo info = {};
  info.track = 3;
  plugin.Reserved0();
  EXPECT_EQ(plugin.GetDisplayTitle(text), 0);
  EXPECT_EQ(Utf8(text), "kept");
  plugin.GetMediaInfo(&info);
  EXPECT_EQ(info.track, 3);
  plugin.SetState(3);
  EXPECT_EQ(plugin.GetState(), 3u);
  for (const int64_t answer :
       {int64_t{plugin.GetLengthMs()}, int64_t{plugin.GetPositionMs(1, 2)},
        int64_t{plugin.Reserved7()}, int64_t{plugin.Reserved8()}, int64_t{plugin.SeekMs(1)},
        int64_t{plugin.Stop()}, int64_t{plugin.TogglePause()}, int64_t{plugin.Play()},
        int64_t{plugin.Close(1, 2)}, int64_t{plugin.Open(L"x", 0)}}) {
    EXPECT_EQ(answer, 0);
  }
  plugin.Destroy(1);
}

TEST(FramesToMsTest, TruncatesAndSaturates) {
  EXPECT_EQ(SaturatedMs(FramesToMs(8008, 8000)), 1000) << "1001 with wider intermediates";
  EXPECT_EQ(SaturatedMs(FramesToMs(44099, 44100)), 999);
  EXPECT_EQ(SaturatedMs(FramesToMs(5, 0)), 0);
  EXPECT_EQ(SaturatedMs(FramesToMs(4294967295.0, 1)), INT32_MAX);
}

}  // namespace
}  // namespace kelvo
