#include "bookmarks/bookmark_view.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;
using test::Wide;

class NoFolder final : public InstallFolder {
 public:
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override { folder[0] = 0; }
};

TEST(BookmarkViewTest, FormatsPositions) {
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

TEST(BookmarkViewTest, ParsesEditedPositions) {
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

TEST(BookmarkViewTest, SortsByTheClickedColumn) {
  test::MemoryFiles files;
  files["\\alive"];
  NoFolder folder;
  BookmarkStore store(files, folder);
  ASSERT_TRUE(store.Add(L"\\dead", INT32_MIN, L"bétä"));
  ASSERT_TRUE(store.Add(L"\\alive", INT32_MAX, L"Alpha"));
  ASSERT_TRUE(store.Add(L"\\alive", 5, L"BÉTÄ"));

  const struct {
    BookmarkColumn click;
    int direction;
    const char* order01;  // of bookmarks 0 and 1, and so on
    const char* order12;
    const char* order02;
  } clicks[] = {
      {BookmarkColumn::kState, -1, "<", "=", "<"},  // the first click turns the initial order
      {BookmarkColumn::kTime, 1, "<", ">", "<"},   {BookmarkColumn::kTime, -1, ">", "<", ">"},
      {BookmarkColumn::kTitle, 1, ">", "<", "="},  {BookmarkColumn::kTitle, -1, "<", ">", "="},
      {BookmarkColumn::kTitle, 1, ">", "<", "="},  {BookmarkColumn::kState, 1, ">", "=", ">"},
  };
  BookmarkOrder order;
  EXPECT_EQ(order.column(), BookmarkColumn::kState);
  EXPECT_GT(order.Compare(store, 0, 1), 0) << "at first, files that exist come first";
  for (const auto& c : clicks) {
    order.Click(c.click);
    EXPECT_EQ(order.direction(), c.direction);
    const auto sign = [&](int a, int b) {
      const int result = order.Compare(store, a, b);
      const int reverse = order.Compare(store, b, a);
      EXPECT_TRUE((result < 0) == (reverse > 0) && (result == 0) == (reverse == 0));
      return result < 0 ? "<" : result > 0 ? ">" : "=";
    };
    EXPECT_STREQ(sign(0, 1), c.order01);
    EXPECT_STREQ(sign(1, 2), c.order12);
    EXPECT_STREQ(sign(0, 2), c.order02);
  }
}

TEST(BookmarkViewTest, TheMarkStaysInTheList) {
  EXPECT_EQ(MarkAfterRemoval(0), 0);
  EXPECT_EQ(MarkAfterRemoval(1), 0);
  EXPECT_EQ(MarkAfterRemoval(7), 6);
}

}  // namespace
}  // namespace kelvo
