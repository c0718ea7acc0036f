#include "input/vorbis/comments.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "base/text/wide.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

TEST(Utf8ToWideTest, ConvertsLenientlyAndNeverPastTheZero) {
  const struct {
    const char* name;
    std::string source;
    std::string want;
  } kCases[] = {
      {"empty", "", ""},
      {"two bytes", "J\xC3\xA4ger", "J\u00E4ger"},
      {"three bytes", "\xE2\x82\xACuro", "\u20ACuro"},
      {"four-byte lead takes two more, the fourth byte is stray", "A\xF0\x9F\x98\x80Z", "A\u07D8"},
      {"stray following byte ends the text", "YZ\x80YZ", "YZ"},
      {"following bytes are not checked", "\xC3Z", "\u00DA"},
      {"lead of two cut off by the end", "A\xC3", "A"},
      {"lead of three cut off after one", "A\xE2\x82", "A"},
      {"0xFF is a lead of three", "\xFF\x80\x81Z", "\uF001Z"},
      {"64 characters", std::string(64, 'x'), std::string(63, 'x')},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    // On the heap, so that a read past the terminator is noticed.
    char* source = strdup(c.source.c_str());
    wchar_t out[kCommentCapacity];
    Utf8ToWide(source, out, kCommentCapacity);
    free(source);
    EXPECT_EQ(Utf8(out), c.want);
  }
}

TEST(MapCommentTest, FillsTheFieldOfItsKey) {
  CommentBlock block = {};
  for (const char* comment :
       {"title=first", "TITLEX=wrong", "TITLE", "=", "", "ARTISTS=no", "Artist=A", "TITLE=second",
        "GENRE=", "tracknumber=7/12", "DATE=1999", "ALBUM=a=b", "COMMENT=c", "description=none"}) {
    MapComment(comment, &block);
  }
  EXPECT_EQ(Utf8(block.title), "second") << "the later one counts";
  EXPECT_EQ(Utf8(block.artist), "A");
  EXPECT_EQ(Utf8(block.album), "a=b");
  EXPECT_EQ(Utf8(block.track_number), "7/12");
  EXPECT_EQ(Utf8(block.date), "1999");
  EXPECT_EQ(Utf8(block.comment), "c");
  EXPECT_EQ(Utf8(block.genre), "");
}

TEST(DisplayTitleTest, JoinsArtistAndTitleOrTakesTheFileName) {
  const struct {
    const char* artist;
    const char* title;
    const char* path;
    const char* want;
  } kCases[] = {
      {"A", "T", "\\x.ogg", "A - T"},      {"A", "", "\\x.ogg", "A - "},
      {"", "T", "\\x.ogg", " - T"},        {"", "", "\\My Music\\Song.ogg", "Song"},
      {"", "", "\\Disc.1\\Track", "Trac"}, {"", "", "Song.live.ogg", "Song.live"},
      {"", "", "\\Music\\", ""},           {"", "", "", ""},
      {"", "", "\\Music\\.ogg", ".og"},    {"", "", "x", ""},
  };
  for (const auto& c : kCases) {
    CommentBlock comments = {};
    CopyWide(comments.artist, kCommentCapacity, Wide(c.artist));
    CopyWide(comments.title, kCommentCapacity, Wide(c.title));
    wchar_t text[kTextCapacity];
    MakeDisplayTitle(comments, Wide(c.path), text);
    EXPECT_EQ(Utf8(text), c.want) << c.path;
  }
}

}  // namespace
}  // namespace kelvo
