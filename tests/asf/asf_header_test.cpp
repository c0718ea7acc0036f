#include "input/wma/asf_header.h"

#include <gtest/gtest.h>

#include <string.h>

#include <memory>
#include <utility>

#include "tests/support/asf_builder.h"
#include "tests/support/faults.h"
#include "tests/support/media_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::AsfBuilder;
using test::FailingSource;
using test::Le;
using test::Utf16;
using test::Utf8;

std::unique_ptr<AsfInfo> Read(const std::string& bytes, const wchar_t* path = L"\\m\\x.wma") {
  auto info = std::make_unique<AsfInfo>();
  FailingSource source(bytes, -1);
  EXPECT_TRUE(ReadAsfInfo(source, path, info.get()));
  return info;
}

std::string Texts(const AsfInfo& info) {
  return Utf8(info.title) + "|" + Utf8(info.author) + "|" + Utf8(info.album) + "|" +
         Utf8(info.format.genre) + "|" + Utf8(info.display_title);
}

std::string Numbers(const AsfInfo& info) {
  return std::to_string(info.format.sample_rate) + " kHz " + std::to_string(info.format.bit_rate) +
         " kbps " + (info.format.stereo ? "stereo" : "mono") + " #" +
         std::to_string(info.format.track) + " " + std::to_string(info.length_ms) + " ms sdk " +
         std::to_string(info.sdk_version);
}

AsfBuilder Complete() {
  AsfBuilder file;
  file.FileProperties(1234567890, 3000)
      .Unknown(7)
      .Description("Song", "Band")
      .Extended(5, AsfBuilder::Text("WM/AlbumTitle", "Disc") +
                       AsfBuilder::Attribute("WM/Picture", 1, "picture") +
                       AsfBuilder::Text("wm/genre", "Rock") +
                       AsfBuilder::Number("WM/TrackNumber", 4) +
                       AsfBuilder::Text("WMFSDKVersion", "9.0.1"))
      .Codec(" 64 kbps, 44 kHz, stereo 1-pass CBR");
  return file;
}

TEST(AsfHeaderTest, ReadsACompleteHeader) {
  const auto info = Read(Complete().Build());
  EXPECT_EQ(Texts(*info), "Song|Band|Disc|Rock|Band - Song");
  EXPECT_EQ(Numbers(*info), "44 kHz 64 kbps stereo #4 120456 ms sdk 9");
}

TEST(AsfHeaderTest, RefusesWhatIsNoAsfFileAndClearsTheOutputs) {
  std::string wrong_guid = Complete().Build();
  wrong_guid[15] ^= 1;
  for (const std::string& bytes :
       {std::string(), std::string("x"), Complete().Build().substr(0, 29), wrong_guid}) {
    AsfInfo info;
    memset(&info, 0xEE, sizeof(info));
    FailingSource source(bytes, -1);
    EXPECT_FALSE(ReadAsfInfo(source, L"a.wma", &info));
    const AsfInfo zero = {};
    EXPECT_EQ(memcmp(&info, &zero, sizeof(info)), 0) << bytes.size();
  }
}

TEST(AsfHeaderTest, CutsLongValuesAndReadsOnBehindThem) {
  const std::string longer(30000, 'n');
  const auto info =
      Read(AsfBuilder()
               .Description(std::string(300, 't'), std::string(32767, 'a'))
               .Extended(4, AsfBuilder::Text("WM/AlbumTitle", longer) +
                                AsfBuilder::Attribute(longer, 0, Utf16("x")) +
                                AsfBuilder::Text("WM/Genre", std::string(40, 'g')) +
                                AsfBuilder::Attribute("WMFSDKVersion", 0, Utf16("12") + "3"))
               .Codec(std::string(4000, ' ') + "5 kbps, 6 kHz" + std::string(3000, ' ') + "stereo")
               .Build());
  EXPECT_EQ(Texts(*info), std::string(259, 't') + "|" + std::string(259, 'a') + "|" +
                              std::string(259, 'n') + "|" + std::string(31, 'g') + "|" +
                              std::string(259, 'a'));
  EXPECT_EQ(Numbers(*info), "6 kHz 5 kbps mono #100000 0 ms sdk 12");
}

TEST(AsfHeaderTest, UnderstandsCodecsBitRatesLengthsAndVersions) {
  using B = AsfBuilder;
  const std::string audio = B::CodecEntry(2, "64 kbps, 44 kHz, stereo");
  const struct {
    const char* name;
    AsfBuilder file;
    const char* want;  // among the numbers
  } kCases[] = {
      {"empty", B().Codec(""), "0 kHz 0 kbps mono"},
      {"both numbers", B().Codec("128 kbps, 48 kHz, stereo"), "48 kHz 128 kbps stereo"},
      {"fraction", B().Codec("at 20.5 kbps"), "0 kHz 20 kbps mono"},
      {"case", B().Codec("20 KBPS, 44 kHz, Stereo"), "0 kHz 20 kbps mono"},
      {"one number", B().Codec("44 kHz"), "0 kHz 44 kbps mono"},
      {"variable rate", B().Codec("VBR Quality 75, 44 kHz, stereo 1-pass VBR"),
       "44 kHz 0 kbps stereo"},
      {"lower case", B().Codec("vbr 75 44"), "0 kHz 0 kbps mono"},
      {"VBR alone", B().Codec("VBR"), "0 kHz 0 kbps mono"},
      {"beyond 32 bits", B().Codec("99999999999 kbps, 1"), "1 kHz 2147483647 kbps mono"},
      {"version as number", B().Extended(2, B::Number("WMFSDKVersion", 9) + B::Number("x", 1)),
       "sdk 0"},
      {"version as number behind text",
       B().Extended(2, B::Text("WMFSDKVersion", "8.1") + B::Number("WMFSDKVersion", 9)), "sdk 8"},
      {"two versions",
       B().Extended(2, B::Text("WMFSDKVersion", "8.1") + B::Text("wmfsdkversion", "11")), "sdk 11"},
      {"a version without number",
       B().Extended(2, B::Text("WMFSDKVersion", "7") + B::Text("WMFSDKVersion", "x")), "sdk 0"},
      {"the last length", B().FileProperties(50000, 1).FileProperties(70000, 0), " 7 ms"},
      {"a length less its preroll", B().FileProperties(30019999, 3000), " 1 ms"},
      {"preroll alone", B().FileProperties(0, 1), " 3133608138 ms"},
      {"64 bits", B().FileProperties(uint64_t{1} << 63, 0), " 1566804069 ms"},
      {"more objects than there are", B().FileProperties(10000, 0).Count(~0u), " 1 ms"},
      {"fewer", B().FileProperties(10000, 0).Count(0), " 0 ms"},
      {"one of three", B().Unknown(1).FileProperties(10000, 0).Unknown(1).Count(1), " 0 ms"},
      {"video is not read", B().Codecs(2, B::CodecEntry(1, "9 kbps, 9") + audio),
       "44 kHz 64 kbps stereo"},
      {"an empty entry changes nothing", B().Codecs(2, audio + B::CodecEntry(2, "")),
       "44 kHz 64 kbps stereo"},
      {"more than 255 bytes of information",
       B().Codecs(2, Le(2, 2) + Le(0, 2) + Le(0, 2) + Le(300, 2) + std::string(300, 'i') + audio),
       "44 kHz 64 kbps stereo"},
      {"a variable rate behind a constant one",
       B().Codecs(2, audio + B::CodecEntry(2, "VBR 9, 22 kHz")), "22 kHz 0 kbps stereo"},
      {"mono behind stereo", B().Codecs(2, audio + B::CodecEntry(2, "20 kbps, 8 kHz, mono")),
       "8 kHz 20 kbps stereo"},
      {"a second list", B().Codecs(1, audio).Codec("20 kbps, 8 kHz, mono"), "8 kHz 64 kbps mono"},
      {"list without end", B().Codecs(0xFFFFFFFF, audio), "44 kHz 64 kbps stereo"},
      {"average first", B().Bitrates(2, B::Bitrate(32000) + B::Bitrate(65999)).Codec("64 kbps, 8"),
       "8 kHz 48 kbps mono"},
      {"description first", B().Codec("64 kbps, 8").Bitrates(1, B::Bitrate(32000)),
       "8 kHz 64 kbps mono"},
      {"average of a VBR file", B().Bitrates(1, B::Bitrate(96000)).Codec("VBR, 44 kHz"),
       "44 kHz 96 kbps mono"},
      {"no record", B().Bitrates(0, ""), "0 kHz 0 kbps mono"},
      {"records missing", B().Bitrates(2, B::Bitrate(96000)), "0 kHz 0 kbps mono"},
      {"sum beyond 32 bits", B().Bitrates(2, B::Bitrate(~0u) + B::Bitrate(~0u)),
       "0 kHz 4294967 kbps mono"},
  };
  for (const auto& c : kCases) {
    EXPECT_NE(Numbers(*Read(c.file.Build())).find(c.want), std::string::npos)
        << c.name << ": " << Numbers(*Read(c.file.Build()));
  }
}

TEST(AsfHeaderTest, EndsTheWalkAtImpossibleSizes) {
  constexpr const char* kAny = "00112233-4455-6677-8899-AABBCCDDEEFF";
  const struct {
    const char* name;
    uint64_t size;
    bool goes_on;
  } kSizes[] = {{"right", 24 + 8, true},
                {"0", 0, false},
                {"23", 23, false},
                {"behind the end", 5000, false},
                {"2^63 and more", (uint64_t{1} << 63) + 32, false},
                {"all bits", ~uint64_t{0}, false}};
  for (const auto& c : kSizes) {
    SCOPED_TRACE(c.name);
    const auto info = Read(AsfBuilder()
                               .Description("before", "")
                               .Object(kAny, "12345678", c.size)
                               .FileProperties(10000, 0)
                               .Build());
    EXPECT_EQ(Utf8(info->title), "before");
    EXPECT_EQ(info->length_ms, c.goes_on ? 1u : 0u);
  }
}

TEST(AsfHeaderTest, FallsBackToTheFileName) {
  const struct {
    const wchar_t* path;
    const char* want;
  } kCases[] = {
      {L"a.b.wma", "a.b"},
      {L"\\d.x\\Song.wma", "Song"},
      {L"\\d.x\\Song", "Song"},
      {L"\\d\\.wma", ".wma"},
      {L"\\d\\Song.", "Song"},
      {L"\\d\\..", "."},
      {L"", ""},
      {L"\\d\\", ""},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Utf8(Read(AsfBuilder().Build(), c.path)->display_title), c.want);
  }
}

TEST(AsfHeaderTest, ReadsFilesOfARealEncoder) {
  for (const auto& [name, title] :
       {std::pair{"sample.wma", "Sixteen Strings"}, std::pair{"sample_v1.wma", "Sixteen Notes"}}) {
    SCOPED_TRACE(name);
    const std::vector<char> bytes = test::ReadMedia(name);
    const auto info = Read(std::string(bytes.begin(), bytes.end()));
    EXPECT_EQ(Texts(*info), std::string(title) + "|The Ring Buffers|Fixed Point|Folk|" +
                                "The Ring Buffers - " + title);
    // The encoder leaves the codec's description empty.
    EXPECT_EQ(info->format.sample_rate, 0u);
    EXPECT_EQ(info->format.bit_rate, 0u);
    EXPECT_GT(info->length_ms, 0u);
  }
}

// Whatever breaks off, what was complete before is kept and nothing is invented.
void ExpectPartOfComplete(const AsfInfo& info) {
  const auto complete = Read(Complete().Build());
  const auto is_part = [](const wchar_t* got, const wchar_t* want) {
    return got[0] == 0 || Utf8(got) == Utf8(want);
  };
  EXPECT_TRUE(is_part(info.title, complete->title) && is_part(info.author, complete->author) &&
              is_part(info.album, complete->album) &&
              is_part(info.format.genre, complete->format.genre))
      << Texts(info);
  EXPECT_TRUE(info.format.track == 4 || info.format.track == kNoAsfTrack);
  EXPECT_TRUE(info.length_ms == 120456 || info.length_ms == 0);
  EXPECT_TRUE(info.format.bit_rate == 64 || info.format.bit_rate == 0);
}

TEST(AsfHeaderTest, KeepsWhatWasCompleteAtEveryTruncationAndFailingRead) {
  const std::string bytes = Complete().Build();
  const auto read = [](FailingSource&& source, bool is_taken) {
    AsfInfo info;
    EXPECT_EQ(ReadAsfInfo(source, L"x.wma", &info), is_taken);
    if (is_taken) ExpectPartOfComplete(info);
    return source.triggered();
  };
  test::SweepTruncations(
      bytes, [&](const std::string& cut) { read(FailingSource(cut, -1), cut.size() >= 30); });
  EXPECT_GT(test::Sweep([&](long n) { return read(FailingSource(bytes, n), n > 0); }), 2);
  AsfInfo info;
  const AsfInfo empty = {};
  memset(&info, 0xAA, sizeof(info));
  const test::HeapFaults faults(0);
  FailingSource source(bytes, -1);
  EXPECT_FALSE(ReadAsfInfo(source, L"x.wma", &info));
  EXPECT_EQ(memcmp(&info, &empty, sizeof(info)), 0);
}

}  // namespace
}  // namespace kelvo
