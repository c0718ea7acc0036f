#include "input/vorbis/vorbis_stream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "input/vorbis/decoder_heap.h"
#include "tests/support/faults.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::MemoryReader;
using test::ReadMedia;
using test::Utf8;

class VorbisStreamTest : public ::testing::Test {
 protected:
  void SetUp() override { DecoderHeap::AttachModule(); }
  void TearDown() override { DecoderHeap::DetachModule(); }
};

struct Played {
  bool opened = false;
  VorbisRead end = kReadData;
  std::vector<char> pcm;
};

// Opens, asks for everything, reads to the end, seeks to the middle, closes.
Played PlayThrough(MemoryReader& reader) {
  Played played;
  OpenVorbis stream = OpenVorbisReader(&reader);
  if (!stream) return played;
  played.opened = true;
  CommentBlock comments;
  VorbisInfo info;
  GetVorbisComments(stream.get(), &comments);
  GetVorbisInfo(stream.get(), &info);
  char chunk[8192];
  uint32_t count;
  while ((played.end = ReadVorbis(stream.get(), chunk, sizeof(chunk), &count)) == kReadData) {
    played.pcm.insert(played.pcm.end(), chunk, chunk + count);
  }
  SeekVorbis(stream.get(), VorbisTotal(stream.get()) / 2);
  ReadVorbis(stream.get(), chunk, sizeof(chunk), &count);
  stream.Close();
  return played;
}

// The seven values are those of the identification header; its end is no error, however often
// asked.
TEST_F(VorbisStreamTest, TellsTheHeadersValuesAndStaysAtTheEnd) {
  const std::vector<char> file = ReadMedia("tone_22050_stereo.ogg");
  const auto word = [&](size_t at) {
    int32_t value;
    memcpy(&value, file.data() + 35 + at, 4);
    return value;
  };
  MemoryReader reader(file);
  OpenVorbis stream = OpenVorbisReader(&reader);
  VorbisInfo info;
  ASSERT_TRUE(GetVorbisInfo(stream.get(), &info));
  const int32_t want[] = {word(0), 2, word(5), word(9), word(13), word(17), 0};
  EXPECT_EQ(memcmp(&info, want, sizeof(want)), 0);
  EXPECT_TRUE(SeekVorbis(stream.get(), VorbisTotal(stream.get())));
  EXPECT_EQ(VorbisPosition(stream.get()), VorbisTotal(stream.get()));
  char chunk[8192];
  uint32_t count;
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(ReadVorbis(stream.get(), chunk, sizeof(chunk), &count), kReadEnd);
  }
}

TEST_F(VorbisStreamTest, AnswersForANullStream) {
  uint32_t count = 5;
  VorbisInfo info;
  CommentBlock comments;
  EXPECT_EQ(ReadVorbis(nullptr, nullptr, 8192, &count), kReadError);
  EXPECT_EQ(count, 0u);
  EXPECT_FALSE(SeekVorbis(nullptr, 0));
  EXPECT_EQ(VorbisPosition(nullptr), 0);
  EXPECT_EQ(VorbisTotal(nullptr), 0);
  EXPECT_FALSE(GetVorbisInfo(nullptr, &info));
  EXPECT_FALSE(GetVorbisComments(nullptr, &comments));
  CloseVorbis(nullptr);
  EXPECT_FALSE(OpenVorbisReader(nullptr));
  EXPECT_FALSE(OpenVorbisPath(SystemFiles(), L""));
  EXPECT_FALSE(OpenVorbisPath(SystemFiles(), L"no such file.ogg"));
}

TEST_F(VorbisStreamTest, ReadsNothingIntoASmallBuffer) {
  MemoryReader reader(ReadMedia("tone_8000_mono.ogg"));
  OpenVorbis stream = OpenVorbisReader(&reader);
  ASSERT_TRUE(stream);
  std::vector<char> buffer(4096, 'x');
  uint32_t count = 5;
  EXPECT_EQ(ReadVorbis(stream.get(), buffer.data(), 4095, &count), kReadTooSmall);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(buffer, std::vector<char>(4096, 'x'));
  EXPECT_EQ(ReadVorbis(stream.get(), buffer.data(), 4096, &count), kReadData);
  stream.Close();
}

TEST_F(VorbisStreamTest, GivesWhatTheDecoderGives) {
  for (const char* name :
       {"tone_22050_stereo.ogg", "channels_255.ogg", "chained.ogg", "tone_44100_6ch.ogg"}) {
    const std::vector<char> file = ReadMedia(name);
    MemoryReader reader(file);
    const Played played = PlayThrough(reader);
    EXPECT_EQ(played.end, kReadEnd) << name;
    EXPECT_FALSE(played.pcm.empty()) << name;
    EXPECT_EQ(played.pcm, test::DecodeDirectly(file)) << name;
    EXPECT_EQ(reader.log, "close ");
  }
  std::vector<char> holed = ReadMedia("tone_44100_stereo.ogg");
  const auto middle = holed.begin() + static_cast<long>(holed.size() / 2);
  holed.erase(middle, middle + 700);
  MemoryReader reader(holed);
  EXPECT_TRUE(PlayThrough(reader).opened) << "a hole further in";
}

TEST_F(VorbisStreamTest, MapsTheCommentsOfHugeHeaders) {
  const std::vector<char> file = ReadMedia("tone_8000_mono.ogg");
  std::vector<std::string> many(65536, "KEY=value");
  many.push_back("title=Found");
  const struct {
    const char* name;
    std::vector<std::string> comments;
    const char* title;
  } kCases[] = {
      {"none", {}, ""},
      {"64k comments", many, "Found"},
      {"a picture of 4 MB", {"COMMENT=" + std::string(4u << 20, 'c'), "TITLE=Behind"}, "Behind"},
      {"ends in a lead byte", {"TITLE=A\xE2"}, "A"},
      {"holds a zero byte", {std::string("TITLE=A\0B", 9)}, "A"},
  };
  for (const auto& c : kCases) {
    MemoryReader reader(test::WithComments(file, c.comments));
    OpenVorbis stream = OpenVorbisReader(&reader);
    ASSERT_TRUE(stream) << c.name;
    CommentBlock block;
    EXPECT_TRUE(GetVorbisComments(stream.get(), &block));
    EXPECT_EQ(Utf8(block.title), c.title) << c.name;
    stream.Close();
  }
}

TEST_F(VorbisStreamTest, RefusesCommentsThatNoDeviceCouldHoldBeforeTheirEnd) {
  for (const char* comment : {"COMMENT=", "TITLE=T"}) {
    std::vector<std::string> comments(comment[0] == 'C' ? 1 : 800000, comment);
    if (comments.size() == 1) comments[0].resize(60u << 20, 'c');
    MemoryReader reader(test::WithComments(ReadMedia("tone_8000_mono.ogg"), comments));
    EXPECT_FALSE(OpenVorbisReader(&reader));
    EXPECT_LT(reader.bytes_read, 17u << 20);
  }
}

// The title stays when the decoder is lost, and belongs to the link that is played.
TEST_F(VorbisStreamTest, TellsTheCommentsOfTheCurrentLink) {
  std::vector<char> file = test::WithComments(ReadMedia("tone_8000_mono.ogg"), {"TITLE=one"});
  const std::vector<char> second =
      test::WithComments(ReadMedia("tone_44100_stereo.ogg"), {"TITLE=two"}, 78);
  file.insert(file.end(), second.begin(), second.end());
  MemoryReader reader(file);
  OpenVorbis stream = OpenVorbisReader(&reader);
  ASSERT_TRUE(stream);
  EXPECT_EQ(VorbisTotal(stream.get()), 16000 + 88200);
  char pcm[4096];
  uint32_t count;
  const struct {
    int64_t place;
    bool memory_fails;
    const char* title;
  } kSteps[] = {
      {0, false, "one"}, {20000, false, "two"}, {100, false, "one"}, {30000, true, "one"}};
  for (const auto& step : kSteps) {
    {
      HeapFaults faults(step.memory_fails ? 0 : 1000000, HeapFaults::Mode::kFromThenOn);
      EXPECT_EQ(SeekVorbis(stream.get(), step.place), !step.memory_fails) << step.place;
      EXPECT_EQ(ReadVorbis(stream.get(), pcm, sizeof(pcm), &count),
                step.memory_fails ? kReadError : kReadData);
    }
    CommentBlock block;
    EXPECT_TRUE(GetVorbisComments(stream.get(), &block));
    EXPECT_EQ(Utf8(block.title), step.title);
  }
}

// The decoder looks for the last page until it has it; its first reads are of the first page.
TEST_F(VorbisStreamTest, BearsSixtyFourEmptyReadsInARow) {
  for (const int empty : {64, 65}) {
    MemoryReader reader(ReadMedia("tone_8000_stereo.ogg"));
    reader.fail_reads_from = 4;
    reader.failing_reads = empty;
    EXPECT_EQ(PlayThrough(reader).opened, empty == 64);
  }
}

// Truncations are the fuzz target's, which replays its corpus.
TEST_F(VorbisStreamTest, EndsWhateverFailsAndClosesTheReader) {
  const std::vector<char> file = ReadMedia("tone_8000_stereo.ogg");
  const long reads = test::Sweep([&](long n) {
    MemoryReader reader(file);
    reader.fail_reads_from = static_cast<int>(n);
    const Played played = PlayThrough(reader);
    EXPECT_EQ(reader.log, played.opened ? "close " : "");
    return reader.reads > n;
  });
  EXPECT_GT(reads, 5);
  MemoryReader reader(file);
  reader.failing_seeks = -1;
  EXPECT_EQ(PlayThrough(reader).opened ? "close " : "", reader.log);
  test::Sweep([&](long n) {
    const HeapFaults faults(n * test::FaultStep(29), HeapFaults::Mode::kFromThenOn);
    MemoryReader again(file);
    EXPECT_EQ(PlayThrough(again).opened ? "close " : "", again.log);
    return faults.triggered();
  });
}

}  // namespace
}  // namespace kelvo
