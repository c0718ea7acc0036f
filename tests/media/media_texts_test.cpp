#include <gtest/gtest.h>

#include "catalog/media/entry_list.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

TEST(MediaKindTest, LooksAtThreeLettersBehindAPoint) {
  const struct {
    const wchar_t* path;
    int32_t want;
  } kCases[] = {
      {L"a.m3u", 1},      {L"a.mp3", 2},       {L"a.mp2", 2}, {L"a.mp1", 2},    {L"a.ogg", 3},
      {L"a.pls", 4},      {L"a.wma", 5},       {L"a.asf", 5}, {L"a.asx", 6},    {L"a.MP3", 2},
      {L"a.Mp3", 2},      {L"\\d\\a.OGG", 3},  {L".mp3", 2},  {L"a.b.ogg", 3},  {L"mp3", -1},
      {L"", -1},          {L"a", -1},          {L".mp", -1},  {L"a.mp4", -1},   {L"a.flac", -1},
      {L"a.mpeg", -1},    {L"a.mp3 ", -1},     {L"amp3", -1}, {L"a.mp3\\", -1}, {L"a.m3u8", -1},
      {L"a.m3u.txt", -1}, {L"a.\xFF4Dp3", -1},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(static_cast<int32_t>(MediaKindOf(c.path)), c.want) << test::Utf8(c.path);
  }
}

}  // namespace
}  // namespace kelvo
