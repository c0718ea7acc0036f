#include "bookmarks/bookmark_store.h"

#include <gtest/gtest.h>

#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

TEST(BookmarkPositionTest, FormatsPositions) {
  const struct {
    int32_t position_s;
    const char *list, *minutes, *seconds;
  } cases[] = {
      {0, "0:00", "000", "00"},
      {9, "0:09", "000", "09"},
      {90, "1:30", "001", "30"},
      {3725, "62:05", "062", "05"},
      {12075, "201:15", "201", "15"},
      {600000, "10000:00", "10000", "00"},
      {INT32_MAX, "35791394:07", "35791394", "07"},
      {-5, "0:-5", "000", "-5"},
      {-75, "-1:-15", "-01", "-15"},
      {INT32_MIN, "-35791394:-8", "-35791394", "-8"},
  };
  for (const auto& c : cases) {
    wchar_t list[kPositionTextCapacity];
    wchar_t minutes[kPositionTextCapacity];
    wchar_t seconds[kPositionTextCapacity];
    FormatListPosition(c.position_s, list);
    FormatEditPosition(c.position_s, minutes, seconds);
    EXPECT_EQ(Utf8(list), c.list);
    EXPECT_EQ(Utf8(minutes), c.minutes);
    EXPECT_EQ(Utf8(seconds), c.seconds);
  }
}

TEST(BookmarkPositionTest, ParsesEditedPositions) {
  const struct {
    const char *minutes, *seconds;
    int32_t want;
  } cases[] = {
      {"001", "30", 90},
      {"200", "75", 12075},
      {"", "", 0},
      {"abc", "x", 0},
      {" 2", "\t3", 123},
      {"2 ", "3x", 123},
      {"-1", "-1", 0},
      {"35791394", "7", INT32_MAX},
      {"35791394", "8", INT32_MAX},
      {"4294967295", "4294967295", INT32_MAX},
      {"0", "99999999999999999999999999", INT32_MAX},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ParseEditPosition(Wide(c.minutes), Wide(c.seconds)), c.want)
        << c.minutes << ":" << c.seconds;
  }
}

}  // namespace
}  // namespace kelvo
