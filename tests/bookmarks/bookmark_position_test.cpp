#include "bookmarks/bookmark_list.h"

#include <gtest/gtest.h>

#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/faults.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::ReadTexts;
using test::Utf16;
using test::Utf8;
using test::Wide;
using Strings = std::vector<std::string>;

std::string Repeat(size_t count, char c) {
  return std::string(count, c);
}

// Three records, of which the second one's description is empty; across a block's border.
std::string Sample() {
  return Utf16("\\Music\\" + Repeat(240, 'x') + ".ogg\r\n3725\r\n" + Repeat(259, 'd') +
               "\r\n\\b\r\n-1\r\n\r\n\\c\r\n0\r\nlast\r\n");
}

Strings FirstOf(const Strings& all, size_t count) {
  return Strings(all.begin(), all.begin() + static_cast<long>(count));
}

TEST(BookmarkListTest, EveryFailingReadKeepsTheRecordsBefore) {
  const std::string file = Sample() + Sample() + Sample();
  const Strings whole = ReadTexts(file);
  const long reads = test::Sweep([&](long n) {
    test::FailingSource source(file, n);
    BookmarkList list;
    ReadBookmarks(source, &list);
    const size_t count = static_cast<size_t>(list.size());
    EXPECT_EQ(test::Texts(list), FirstOf(whole, count));
    EXPECT_EQ(count == 9, n >= 4) << "the last one finds the end";
    return source.triggered();
  });
  EXPECT_EQ(reads, 5) << "blocks of 1 KiB, and the end";
}

TEST(BookmarkListTest, EveryFailingAllocationKeepsTheRecordsBefore) {
  const std::string file = Sample();
  const Strings whole = ReadTexts(file);
  BookmarkList list;
  const long requests = test::SweepHeap(
      [&] {
        MemorySource source(file.data(), file.size());
        list.Clear();
        ReadBookmarks(source, &list);
      },
      [&](bool failed) {
        EXPECT_EQ(test::Texts(list), FirstOf(whole, static_cast<size_t>(list.size())));
        EXPECT_EQ(list.size() == 3, !failed);
      });
  EXPECT_EQ(requests, 7) << "one block of list and two texts a record";
}

TEST(BookmarkListTest, WritesWhatReadsBackAsTheSameBookmarks) {
  BookmarkList list;
  const auto add = [&](const std::string& path, int32_t position_s, const char* description) {
    Bookmark bookmark;
    bookmark.position_s = position_s;
    ASSERT_TRUE(bookmark.path.Assign(Wide(path)));
    ASSERT_TRUE(bookmark.description.Assign(Wide(description)));
    ASSERT_TRUE(list.Insert(list.size(), std::move(bookmark)));
  };
  const std::string long_path = "\\Music\\" + Repeat(252, 'x');
  const std::string long_text = Repeat(259, 'd');
  add(long_path, 3725, long_text.c_str());
  add("", 7, "would end the list");
  ASSERT_TRUE(list.Insert(1, Bookmark())) << "without texts";
  add("\\b\r\n", INT32_MIN, "Live\r\nin\rRome\n");
  add("\\c", 0, "");
  const std::string want = Utf16(long_path + "\r\n3725\r\n" + long_text +
                                 "\r\n\\b  \r\n-2147483648\r\nLive  in Rome \r\n\\c\r\n0\r\n\r\n");
  test::MemoryFiles files;
  const long writes = test::Sweep([&](long n) {
    files.FailAfter(n, false, "write");
    OpenFile<FileWriter> out = files.Create(L"f", Share::kNone);
    const bool ok = WriteBookmarks(*out, list);
    EXPECT_EQ(files["f"], want.substr(0, ok ? want.size() : static_cast<size_t>(n) * 1024))
        << "nothing follows a failed write";
    return !ok;
  });
  EXPECT_EQ(writes, 2);
  EXPECT_EQ(ReadTexts(want).size(), 3u);
}

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
