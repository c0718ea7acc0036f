#include "bookmarks/bookmarks_feature.h"

#include <gtest/gtest.h>

#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/faults.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf16;
using test::Utf8;
using test::Wide;
using Strings = std::vector<std::string>;

class Window final : public BookmarksWindow {
 public:
  bool Run(WindowHandle parent, BookmarkStore& store) noexcept override {
    last_parent = parent;
    store.Load();
    store.SortBy(BookmarkColumn::kTime);
    return opens;
  }
  bool opens = true;
  WindowHandle last_parent = nullptr;
};

class BookmarksFeatureTest : public ::testing::Test {
 protected:
  BookmarksFeatureTest() { files_.PutFolder("\\V"); }
  static constexpr char kFile[] = "\\V\\bookmarks.dat";

  void Load(const std::string& text) {
    files_[kFile] = Utf16(text);
    feature_.LoadBookmarks();
    files_.log.clear();
  }

  Strings List() {
    Strings texts;
    wchar_t path[kMaxText] = {};
    wchar_t description[kMaxText] = {};
    for (int32_t i = 0;; ++i) {
      int32_t position = -99;
      const int32_t exists = feature_.GetBookmark(i, path, description, &position);
      if (position == -99) return texts;
      texts.push_back(Utf8(path) + "|" + std::to_string(position) + "|" + Utf8(description) +
                      (exists ? "" : " (dead)"));
    }
  }
  std::string Saved() {
    const test::MemoryFiles::File* file = files_.Find(kFile);
    return file ? file->bytes : "no file";
  }

  test::MemoryFiles files_;
  test::FixedFolder folder_;
  Window window_;
  BookmarksFeature feature_{files_, folder_, &window_};
};

TEST_F(BookmarksFeatureTest, SortsByTheClickedColumn) {
  files_["\\alive"];
  BookmarkStore store(files_, folder_);
  ASSERT_TRUE(store.Add(L"\\dead", INT32_MIN, L"bétä"));
  ASSERT_TRUE(store.Add(L"\\alive", INT32_MAX, L"Alpha"));
  ASSERT_TRUE(store.Add(L"\\alive", 5, L"BÉTÄ"));
  const auto orders = [&] {
    EXPECT_EQ(store.Compare(0, 0), 0);
    std::string all;
    for (const auto& pair : {std::pair(0, 1), std::pair(1, 2), std::pair(0, 2)}) {
      const int result = store.Compare(pair.first, pair.second);
      EXPECT_EQ(store.Compare(pair.second, pair.first), -result);
      all += result < 0 ? '<' : result > 0 ? '>' : '=';
    }
    return all;
  };
  EXPECT_EQ(orders(), ">=>") << "at first, files that exist come first";
  using Column = BookmarkColumn;
  const struct {
    Column click;
    const char* orders;  // of bookmarks 0 and 1, 1 and 2, 0 and 2
  } clicks[] = {
      {Column::kState, "<=<"},  // the first click turns the initial order
      {Column::kTime, "<><"},  {Column::kTime, "><>"},  {Column::kTitle, "><="},
      {Column::kTitle, "<>="}, {Column::kTitle, "><="}, {Column::kState, ">=>"},
  };
  for (const auto& c : clicks) {
    store.SortBy(c.click);
    EXPECT_EQ(orders(), c.orders);
  }
}

TEST_F(BookmarksFeatureTest, FindsABookmarkThatHasMoved) {
  BookmarkStore store(files_, folder_);
  for (const wchar_t* title : {L"x", L"y", L"x"}) ASSERT_TRUE(store.Add(L"p", 1, title));
  const struct {
    int32_t index;
    const wchar_t* path;
    int32_t position_s;
    const wchar_t* description;
    int32_t want;
  } cases[] = {{2, L"p", 1, L"x", 2},  {1, L"p", 1, L"x", 0},  {-1, L"p", 1, L"y", 1},
               {3, L"p", 1, L"y", 1},  {0, L"p", 2, L"x", -1}, {0, L"P", 1, L"x", -1},
               {0, L"p", 1, L"X", -1}, {0, L"", 1, L"x", -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(store.Find(c.index, c.path, c.position_s, c.description), c.want);
  }
}

TEST_F(BookmarksFeatureTest, AsksForTheFolderEachTime) {
  folder_.path = "";
  EXPECT_NE(feature_.AddBookmark(L"a", 1, L"x"), 0);
  EXPECT_TRUE(files_.Find("\\bookmarks.dat")) << "at the root without a folder";
  folder_.path = "\\SD Card";
  files_.PutFolder("\\SD Card");
  EXPECT_NE(feature_.AddBookmark(L"b", 2, L"y"), 0);
  EXPECT_EQ(files_["\\SD Card\\bookmarks.dat"], Utf16("a\r\n1\r\nx\r\nb\r\n2\r\ny\r\n"));
  const size_t before = files_.files().size();
  folder_.path = "\\" + std::string(246, 'f');  // with the name 260 characters
  EXPECT_NE(feature_.AddBookmark(L"c", 3, L"z"), 0);
  EXPECT_EQ(files_.files().size(), before) << "cannot be saved";
  EXPECT_EQ(feature_.LoadBookmarks(), 0);
}

TEST_F(BookmarksFeatureTest, WithoutMemoryNothingChanges) {
  const struct {
    const char* name;
    void (*act)(BookmarksFeature&);
    long requests;
  } cases[] = {
      {"add",
       [](BookmarksFeature& f) {
         int32_t position = -1;
         const bool added = f.AddBookmark(L"n", 9, L"d") != 0;
         f.GetBookmark(50, nullptr, nullptr, &position);
         EXPECT_EQ(added, position == 9);
       },
       3},
      {"longer texts", [](BookmarksFeature& f) { f.UpdateBookmark(0, L"nn", 9, L"dd"); }, 2},
      {"texts as long", [](BookmarksFeature& f) { f.UpdateBookmark(0, L"n", 9, L""); }, 0},
      {"set last played", [](BookmarksFeature& f) { f.SetLastPlayed(L"n", 9, L"d"); }, 3},
  };
  std::string full;  // the next one needs a longer array
  for (int i = 0; i < 50; ++i) full += "a\r\n1\r\nx\r\n";
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const long requests = test::Sweep([&](long n) {
      files_.FailAfter(-1);
      Load(full);
      const Strings before = List();
      files_.FailAfter(0, true, "create");  // an opened file would take memory too
      const test::HeapFaults faults(n);
      c.act(feature_);
      EXPECT_EQ(List() == before, faults.triggered());
      return faults.triggered();
    });
    EXPECT_EQ(requests, c.requests);
  }
}

TEST_F(BookmarksFeatureTest, ShowsItsWindowAndIsDestroyedTwiceWithoutSaving) {
  const std::string file = files_[kFile] = Utf16("a\r\n1\r\nx\r\n");
  int host = 0;
  EXPECT_EQ(feature_.ShowBookmarks(&host), 0);
  EXPECT_EQ(window_.last_parent, &host);
  EXPECT_EQ(List().size(), 1u);
  window_.opens = false;
  EXPECT_EQ(feature_.ShowBookmarks(&host), 1);
  feature_.Destroy(0);
  feature_.Destroy(0);
  EXPECT_EQ(List(), Strings{});
  auto* made = HeapNew<BookmarksFeature>(files_, folder_, nullptr);
  EXPECT_EQ(made->ShowBookmarks(&host), 1);
  EXPECT_EQ(made->LoadBookmarks(), 1);
  made->Destroy(1);  // the leak checker looks
  EXPECT_EQ(Saved(), file);
}

}  // namespace
}  // namespace kelvo
