// The file side of the plug-in, and its life.
#include <gtest/gtest.h>

#include <cstring>

#include "base/memory/heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::MediaPath;
using test::MemoryReader;
using test::ReadMedia;
using test::Utf8;
using test::Wide;

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
  wchar_t title[kMaxText];
  EXPECT_EQ(plugin.GetDisplayTitle(title), 1);
  EXPECT_EQ(Utf8(title), "Ada - Blue");
  MediaInfo info;
  memset(&info, 0x55, sizeof(info));
  plugin.GetMediaInfo(&info);
  EXPECT_EQ(Utf8(info.genre), std::string(31, 'g'));
  EXPECT_EQ(info.sample_rate, 8000u);
  EXPECT_GT(info.bit_rate, 0u);
  EXPECT_LT(info.bit_rate, 500u);
  EXPECT_EQ(info.stereo, 1u);
  EXPECT_EQ(info.track, 12);
  EXPECT_EQ(plugin.GetLengthMs(), 2000);
  reader.refuse_release = true;
  EXPECT_EQ(plugin.Close(1, 2), 0);
  EXPECT_EQ(plugin.GetLengthMs(), 2000) << "kept open";
  reader.refuse_release = false;
  EXPECT_EQ(plugin.Close(1, 2), 42);
  EXPECT_EQ(plugin.GetLengthMs(), 0);
  EXPECT_EQ(plugin.Close(1, 2), 0);
  EXPECT_EQ(reader.log, "open release release close close release ");
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
  OggVorbisPlugin plugin(SystemFiles());
  const struct {
    const char* file;
    uint32_t rate;
    uint32_t stereo;
    uint32_t length_ms;
  } kCases[] = {
      {"tone_8000_mono.ogg", 8000, 0, 2000},
      {"tone_44100_stereo.ogg", 44100, 1, 2000},
      {"tone_44100_6ch.ogg", 44100, 1, 2000},  // more than one channel counts as stereo here
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.file);
    wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
    MediaInfo info = {};
    uint32_t length = 0;
    uint32_t ignored = 5;
    const Wide path(MediaPath(c.file));
    ASSERT_EQ(plugin.GetFileInfo(path, display, album, &info, &length, &ignored, artist, title), 1);
    EXPECT_EQ(Utf8(display), std::string(c.file, strlen(c.file) - 4));
    EXPECT_EQ(info.sample_rate, c.rate);
    EXPECT_EQ(info.stereo, c.stereo);
    EXPECT_EQ(length, c.length_ms);
    EXPECT_EQ(ignored, 5u);
    EXPECT_EQ(
        plugin.GetFileInfo(path, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
  }
  uint32_t length = 9;
  EXPECT_EQ(plugin.GetFileInfo(L"no such file", nullptr, nullptr, nullptr, &length, nullptr,
                               nullptr, nullptr),
            0);
  EXPECT_EQ(length, 9u);
}

TEST(OggVorbisPluginTest, IsABareInputPluginAfterItsDestruction) {
  MemoryReader reader(ReadMedia("tone_8000_mono.ogg"));
  {
    OggVorbisPlugin plugin(SystemFiles());
    plugin.SetReader(&reader);
    ASSERT_EQ(plugin.Open(L"x.ogg", 0), 1);
    InputPlugin* volatile host_pointer = &plugin;
    host_pointer->Destroy(0);
    EXPECT_EQ(reader.log, "open close ");
    host_pointer->SetReader(&reader);
    EXPECT_EQ(host_pointer->Open(L"x.ogg", 0), 0);
    EXPECT_EQ(host_pointer->GetState(), kStopped);
  }
  EXPECT_EQ(reader.log, "open close ") << "the real destructor finds nothing left to do";
  OggVorbisPlugin* owned = HeapNew<OggVorbisPlugin>(SystemFiles());
  owned->Destroy(1);
}

TEST(FramesToMsTest, TruncatesAndSaturates) {
  EXPECT_EQ(FramesToMs(8008, 8000), 1000) << "1001 with wider intermediates";
  EXPECT_EQ(FramesToMs(44099, 44100), 999);
  EXPECT_EQ(FramesToMs(5, 0), 0);
  EXPECT_EQ(FramesToMs(4294967295.0, 1), INT32_MAX);
}

}  // namespace
}  // namespace kelvo
