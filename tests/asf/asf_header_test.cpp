// The calls that fail, and real files. What any bytes amount to: tests/oracles.
#include "input/wma/asf_header.h"

#include <gtest/gtest.h>

#include <string.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/faults.h"
#include "tests/support/media_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::FailingSource;
using test::Utf8;

std::string Media(const char* name) {
  const std::vector<char> bytes = test::ReadMedia(name);
  return {bytes.begin(), bytes.end()};
}

TEST(AsfHeaderTest, RefusesWhatItCannotReadAndClearsTheOutputs) {
  std::string wrong_guid = Media("sample.wma");
  wrong_guid[15] ^= 1;
  const struct {
    std::string bytes;
    long reads = -1;
    long requests = -1;  // for memory
  } kCases[] = {{""},
                {"x"},
                {Media("sample.wma").substr(0, 29)},
                {wrong_guid},
                {Media("sample.wma"), 0},
                {Media("sample.wma"), -1, 0}};
  for (const auto& c : kCases) {
    AsfInfo info;
    memset(&info, 0xEE, sizeof(info));
    FailingSource source(c.bytes, c.reads);
    const test::HeapFaults faults(c.requests);
    EXPECT_FALSE(ReadAsfInfo(source, L"a.wma", &info));
    const AsfInfo zero = {};
    EXPECT_EQ(memcmp(&info, &zero, sizeof(info)), 0) << &c - kCases;
  }
}

// The encoder leaves the codec's description empty. Where a read fails, what was complete before is
// kept and nothing is invented.
TEST(AsfHeaderTest, ReadsFilesOfARealEncoder) {
  for (const auto& [name, title] :
       {std::pair{"sample.wma", "Sixteen Strings"}, std::pair{"sample_v1.wma", "Sixteen Notes"}}) {
    SCOPED_TRACE(name);
    const std::string bytes = Media(name), artist = "The Ring Buffers";
    const std::string want[] = {title, artist, "Fixed Point", "Folk", artist + " - " + title};
    test::Sweep([&](long n) {
      FailingSource source(bytes, n);
      AsfInfo info;
      EXPECT_EQ(ReadAsfInfo(source, L"x.wma", &info), n > 0);
      const bool failed = source.triggered();
      const wchar_t* const texts[] = {info.title, info.author, info.album, info.format.genre};
      for (size_t i = 0; i < 4; ++i) {
        EXPECT_TRUE(Utf8(texts[i]) == want[i] || (failed && texts[i][0] == 0)) << Utf8(texts[i]);
      }
      EXPECT_TRUE(failed || Utf8(info.display_title) == want[4]);
      EXPECT_EQ(info.format.sample_rate + info.format.bit_rate, 0u);
      EXPECT_TRUE(failed || info.length_ms > 0);
      return failed;
    });
  }
}

}  // namespace
}  // namespace kelvo
