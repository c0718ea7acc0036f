#include "host/stream_format.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/media_files.h"

namespace velmora {
namespace {

std::vector<uint32_t> Find(const std::vector<char>& file, size_t count) {
  const std::vector<uint8_t> bytes(file.begin(), file.begin() + static_cast<long>(count));
  StreamFormat format = {7, 7, 7};
  const bool found = FindStreamFormat(bytes.data(), count, &format);
  const std::vector<uint32_t> all = {format.channels, format.sample_rate_hz, format.bit_rate_kbit};
  EXPECT_EQ(found, all[0] != 7);
  return all;
}

TEST(StreamFormat, IsFoundInWholeHeadersAndIsNothingElse) {
  const std::vector<uint32_t> nothing = {7, 7, 7};
  const struct {
    const char* file;
    std::vector<uint32_t> want;
  } kCases[] = {{"sample.wma", {2, 44100, 128}},
                {"sample_v1.wma", {2, 44100, 64}},
                {"mono.wma", {1, 22050, 32}},
                {"sample.ogg", nothing}};
  for (const auto& c : kCases) {
    const std::vector<char> file = kelvo::test::ReadMedia(c.file);
    size_t needed = 0;
    for (size_t count = 0; count < 2000; ++count) {
      const std::vector<uint32_t> found = Find(file, count);
      if (found == nothing) needed = count + 1;
      EXPECT_TRUE(found == nothing || found == c.want) << c.file << ", " << count << " bytes";
    }
    EXPECT_EQ(Find(file, 2000), c.want) << c.file;
    if (c.want == nothing) continue;
    // Sizes of the first object that lead nowhere.
    for (const char size : {0, 23, 127}) {
      for (const size_t at : {46, 49, 50}) {
        std::vector<char> wrong = file;
        for (size_t i = 46; i < 54; ++i) wrong[i] = 0;
        wrong[at] = size;
        EXPECT_EQ(Find(wrong, needed), nothing) << c.file << ", " << at;
      }
    }
  }
}

}  // namespace
}  // namespace velmora
