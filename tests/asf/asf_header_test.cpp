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
