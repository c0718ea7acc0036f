#include <gtest/gtest.h>

#include <string.h>

#include <string>

#include "catalog/media/entry_list.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Wide;

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

TEST(TagFieldTest, CopiesAtMost29Bytes) {
  const struct {
    std::string text, want;
  } kCases[] = {
      {"", ""},
      {"Song", "Song"},
      {std::string(29, 'x'), std::string(29, 'x')},
      {std::string(30, 'x'), std::string(29, 'x')},
      {std::string(259, 'x'), std::string(29, 'x')},
      {"\u00E9", "\xE9"},
      {"a\u4E2D", "a?"},
  };
  for (const auto& c : kCases) {
    TagField field;
    memset(field, 'o', sizeof(field));
    CopyToField(Wide(c.text), field);
    EXPECT_EQ(std::string(field, sizeof(field)), c.want + std::string(31 - c.want.size(), '\0'));
  }
}

TEST(DisplayTextTest, StandsInForMissingFields) {
  const struct {
    const char* name;
    std::string path;
    const char* tag;  // null: no block; else title and artist, or ""
    std::string title, artist;
  } kCases[] = {
      {"tag", "C:\\m\\a.mp3", "x", "x", "x"},
      {"empty fields", "C:\\m\\a.mp3", "", "a.mp3", "Unknown"},
      {"no block", "C:\\m\\a.mp3", nullptr, "a.mp3", "Unknown"},
      {"no folder", "a.mp3", nullptr, "a.mp3", "Unknown"},
      {"one character", "a", nullptr, "", "Unknown"},
      {"two characters", "ab", nullptr, "ab", "Unknown"},
      {"no path", "", nullptr, "", "Unknown"},
      {"ends with a backslash", "ab\\", nullptr, "", "Unknown"},
      {"outside the code page", "\\\u4E2D.mp3", nullptr, "?.mp3", "Unknown"},
      {"long name", "\\" + std::string(300, 'n'), nullptr, std::string(259, 'n'), "Unknown"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    MediaEntry entry;
    ASSERT_TRUE(entry.path.Assign(Wide(c.path)));
    if (c.tag) {
      entry.tag.Reset(HeapNew<TagBlock>());
      CopyToField(Wide(c.tag), entry.tag->title);
      CopyToField(Wide(c.tag), entry.tag->artist);
      CopyToField(Wide(c.tag), entry.tag->album);
      CopyToField(Wide(c.tag), entry.tag->genre);
    }
    char title[kTextCapacity];
    TagField artist, album, genre;
    TitleText(entry, title);
    ArtistText(entry, artist);
    AlbumText(entry, album);
    GenreText(entry, genre);
    EXPECT_EQ(title, c.title);
    EXPECT_EQ(artist, c.artist);
    EXPECT_EQ(album, c.artist);
    EXPECT_EQ(genre, c.artist);
  }
}

}  // namespace
}  // namespace kelvo
