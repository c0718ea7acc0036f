#include "catalog/lists/current_playlist.h"

#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <random>

#include "catalog/lists/device_lists.h"
#include "catalog/tree/checks.h"
#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Utf8;
using test::Wide;

// Entries and the list's items as text: "a b* c!", selected and focused.
class Playlist {
 public:
  explicit Playlist(const std::string& text) {
    for (const char c : text) {
      if (c == '*') selection.selected.back() = true;
      if (c == '!') selection.focused = selection.selected.size() - 1;
      if (c < 'a') continue;
      EXPECT_TRUE(selection.selected.Append(false));
      EXPECT_TRUE(entries.Add(Wide(std::string(1, c))));
    }
    if (text.find('!') == std::string::npos) selection.focused = entries.size();
  }
  std::string Text() const {
    std::string text;
    EXPECT_EQ(entries.size(), selection.selected.size());
    for (size_t i = 0; i < entries.size(); ++i) {
      text += (i ? " " : "") + Utf8(entries[i].path.c_str()) + (selection.selected[i] ? "*" : "") +
              (selection.focused == i ? "!" : "");
    }
    return text;
  }
  EntryList entries;
  ListSelection selection;
};

TEST(PlaylistEdit, MovesAndRemovesWhatIsSelected) {
  // The focus goes along with a selected item that has it, else it stays at its position.
  const struct {
    const char *before, *up, *down, *removed;
  } cases[] = {
      {"", "", "", ""},
      {"a", "a", "a", "a"},
      {"a*!", "a*!", "a*!", ""},
      {"a b* c", "b* a c", "a c b*", "a c"},
      {"a b*! c* d", "b*! c* a d", "a d b*! c*", "a d!"},
      {"a* b c* d", "a* b c* d", "b a* d c*", "b d"},
      {"a b* c d*", "b* a d* c", "a b* c d*", "a c"},
      {"a! b* c", "b*! a c", "a! c b*", "a! c"},
      {"a b! c*", "a c*! b", "a b! c*", "a b!"},
      {"a b c*!", "a c*! b", "a b c*!", "a b!"},
      {"a* b* c*", "a* b* c*", "a* b* c*", ""},
      {"a b* c* d* e f*", "b* c* d* a f* e", "a b* c* d* e f*", "a e"},
      {"a b c*! d e* f", "a c*! b e* d f", "a b d c*! f e*", "a b d! f"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before);
    Playlist up(c.before), down(c.before), removed(c.before);
    MoveSelected(up.entries, up.selection, Direction::kUp);
    MoveSelected(down.entries, down.selection, Direction::kDown);
    RemoveSelected(removed.entries, removed.selection);
    EXPECT_EQ(up.Text(), c.up);
    EXPECT_EQ(down.Text(), c.down);
    EXPECT_EQ(removed.Text(), c.removed);
  }
}

TEST(PlaylistEdit, ColumnsAreShownAndSortedByTheirTexts) {
  EntryList entries;
  for (const char* name : {"\\b.mp3", "\\A.mp3"}) ASSERT_TRUE(entries.Add(Wide(name)));
  entries[0].tag.Reset(HeapNew<TagBlock>());
  TagBlock& tag = *entries[0].tag;
  strcpy(tag.artist, "unknown!");
  strcpy(tag.album, "123456789012345678901234567890");
  strcpy(tag.genre, "UNKNOWN");
  const struct {
    PlaylistColumn column;
    const char *first, *second;
    int compared;
  } cases[] = {
      {PlaylistColumn::kTitle, "b.mp3", "A.mp3", 1},
      {PlaylistColumn::kArtist, "unknown!", "Unknown", 1},
      {PlaylistColumn::kAlbum, "123456789012345678901234567890", "Unknown", -1},
      {PlaylistColumn::kGenre, "UNKNOWN", "Unknown", 0},
  };
  const auto sign = [](int number) { return number < 0 ? -1 : number > 0; };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.first);
    wchar_t text[kColumnCapacity];
    ColumnText(entries[0], c.column, text);
    EXPECT_EQ(Utf8(text), c.first);
    ColumnText(entries[1], c.column, text);
    EXPECT_EQ(Utf8(text), c.second);
    SortState sort;
    for (const int direction : {1, -1, 1}) {
      sort.Tap(static_cast<int>(c.column));
      EXPECT_EQ(sort.direction, direction);
      EXPECT_EQ(sign(CompareEntries(entries[0], entries[1], sort)), c.compared * direction);
    }
    sort.Tap(sort.column);
    sort.Tap(-1);
    EXPECT_EQ(sort.direction, 1) << "another column";
  }
#ifndef _WIN32  // where the machine's code page decides what a title holds
  for (const char* name : {"\\Été.mp3", "\\éTÉ.mp3"}) ASSERT_TRUE(entries.Add(Wide(name)));
  EXPECT_EQ(CompareEntries(entries[2], entries[3], {0, 1}), 0);
#endif
}

TEST(PlaylistEdit, ReordersByAnyPermutation) {
  std::mt19937 random(6);
  for (int round = 0; round < 50; ++round) {
    Playlist list("a b c d e f g h i");
    Array<size_t> order;
    for (size_t i = 0; i < 9; ++i) ASSERT_TRUE(order.Append(i));
    std::shuffle(order.begin(), order.end(), random);
    std::string want, got;
    for (const size_t old : order) want += static_cast<char>('a' + old);
    Reorder(list.entries, order);
    for (const MediaEntry& entry : list.entries) got += Utf8(entry.path.c_str());
    ASSERT_EQ(got, want);
  }
}

std::string g_told;
#if defined(_WIN32) && defined(__i386__)
void __cdecl Tell(const wchar_t* path, HostWord cookie) {
#else
void Tell(const wchar_t* path, HostWord cookie) {
#endif
  EXPECT_EQ(cookie, 42u);
  g_told += (path == kCatalogClearList    ? "clear"
             : path == CatalogEndOfList() ? "end"
                                          : Utf8(path)) +
            ";";
}

TEST(HandOverTest, TellsFlaggedEntriesInOrder) {
  EntryList entries;
  for (const char* name : {"a", "b", "c", "d"}) ASSERT_TRUE(entries.Add(Wide(name)));
  EXPECT_FALSE(AnyChecked(entries));
  HandOverEntries({&Tell, 42}, HandOver::kPlay, entries);
  for (const size_t i : {0, 1, 3}) entries[i].item = 1;
  entries[1].path.Clear();
  EXPECT_TRUE(AnyChecked(entries));
  HandOverEntries({&Tell, 42}, HandOver::kEnqueue, entries);
  HandOverEntries({&Tell, 42}, HandOver::kPlay, entries);
  HandOverEntries({&Tell, 0}, HandOver::kPlay, entries);
  HandOverEntries({nullptr, 42}, HandOver::kPlay, entries);
  EXPECT_EQ(g_told, "clear;end;a;d;end;clear;a;d;end;");
}

TEST(DeleteEntryTest, DoublesTheLastSlotWithItsOwnCopies) {
  for (long n = 0; n < 4; ++n) {
    EntryList entries;
    uintptr_t item = 1;
    for (const char* name : {"a", "b", "c"}) {
      MediaEntry* entry = entries.Add(Wide(name));
      ASSERT_TRUE(entry);
      entry->tag.Reset(HeapNew<TagBlock>());
      entry->item = item++;
    }
    {
      HeapFaults faults(n);
      DeleteEntry(entries, 0);
    }
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(Utf8(entries[0].path.c_str()) + Utf8(entries[1].path.c_str()), "bc");
    EXPECT_EQ(IndexOfNode(entries, 3), 1u) << "the first of the two";
    EXPECT_EQ(entries[2].path.has_value(), n > 0);
    EXPECT_EQ(entries[2].item, n > 0 ? 3u : 0u);
    EXPECT_EQ(static_cast<bool>(entries[2].tag), n > 1);
    EXPECT_NE(entries[2].path.get(), entries[1].path.get());
    DeleteEntry(entries, 2);
    EXPECT_FALSE(entries[2].path.has_value());
    EXPECT_EQ(EntryOfNode(entries, 1), nullptr);
    DeleteEntry(entries, 0);
    EXPECT_EQ(Utf8(entries[0].path.c_str()), "c");
    EXPECT_FALSE(entries[1].path.has_value());
  }
}

TEST(RenamedPathTest, KeepsTheFolder) {
  const std::string longest(259, 'n'), in_music = "\\Music\\" + longest;
  const struct {
    const char *path, *name, *want;
  } cases[] = {
      {"\\Music\\a.m3u", "b.pls", "\\Music\\b.pls"},
      {"\\a.m3u", "b", "\\b"},
      {"a.m3u", "b", "\\b"},
      {"\\Music\\a.m3u", "sub\\c.m3u", "\\Music\\sub\\c.m3u"},
      {"\\Music\\a.m3u", longest.c_str(), in_music.c_str()},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8(RenamedPath(Wide(c.path), Wide(c.name)).c_str()), c.want);
  }
}

class DeviceScanTest : public testing::Test, private ScanProgress {
 protected:
  DeviceScanTest() {
    files_.Put("\\z.mp3", test::Id3v1Tag("T", "A", "L", 8));
    files_.PutFolder("\\Music");
    files_.Put("\\Music\\list.M3U", "");
    files_.Put("\\Music\\a.ogg", "");
    files_.Put("\\Music\\cover.jpg", "");
    files_.PutFolder("\\Music\\Deep.mp3");  // a folder, whatever its name
    files_.Put("\\Music\\Deep.mp3\\b.wma", "");
    files_.Put("\\c.asx", "");
    files_.Put("\\d.pls", "");
    information_.known["\\Music\\a.ogg"] = {"Ogg", "", "", ""};
  }
  std::string Scan(const wchar_t* folder = L"") {
    media_.Clear();
    playlists_.Clear();
    asked_.clear();
    const bool ended = ScanFolder(files_, information_, folder, {&media_, &playlists_}, *this);
    EXPECT_EQ(ended, asked_.size() <= enough_);
    EXPECT_EQ(files_.open_now, 0);
    std::string text;
    for (const MediaEntry& entry : media_) {
      text += Utf8(entry.path.c_str()) + (entry.tag ? "+" : "") + "\n";
    }
    for (size_t i = 0; i < playlists_.size(); ++i) text += "list " + Utf8(playlists_[i]) + "\n";
    return text;
  }

  bool GoesOn(size_t found) noexcept override {
    asked_ += std::to_string(found);
    return asked_.size() <= enough_;
  }

  std::string asked_;     // the numbers told, a digit each
  size_t enough_ = 1000;  // so many times it goes on
  test::MemoryFiles files_;
  test::FakeInformation information_;
  EntryList media_;
  PlaylistFiles playlists_;
};

TEST_F(DeviceScanTest, FindsEverythingInTheFileSystemsOrder) {
  const char* const want =
      "\\z.mp3+\n\\Music\\a.ogg+\n\\Music\\Deep.mp3\\b.wma+\n"
      "list \\Music\\list.M3U\nlist \\c.asx\nlist \\d.pls\n";
  EXPECT_EQ(Scan(), want);
  EXPECT_EQ(Scan(), want);
  EXPECT_EQ(files_.log[0], "list \\*.*");
  EXPECT_EQ(asked_, "011233345");
  for (enough_ = 0; enough_ < 9; ++enough_) {
    SCOPED_TRACE(enough_);
    Scan();
    EXPECT_EQ(asked_.size(), enough_ + 1) << "it is not asked again";
    EXPECT_EQ(media_.size() + playlists_.size(), static_cast<size_t>(asked_.back() - '0'));
  }
  enough_ = 1000;
  information_.wma_available = false;
  EXPECT_EQ(Scan(L"\\Music\\Deep.mp3"), "");
}

TEST_F(DeviceScanTest, RefusesWhatDoesNotFitIn256Characters) {
  std::string folder;
  while (folder.size() < 240) folder += "\\0123456789", files_.PutFolder(folder);
  const std::string longest = folder + "\\" + std::string(256 - folder.size() - 6, 'd');
  ASSERT_EQ(longest.size() + 5, 256u);  // with "\*.*" and the terminator
  files_.PutFolder(longest + "x");
  files_.Put(longest + "x\\lost.m3u", "");
  files_.PutFolder(longest);
  files_.Put(longest + "\\a", "");
  const std::string name = "\\" + std::string(255 - folder.size() - 5, 'n') + ".m3u";
  files_.Put(folder + "\\x" + name.substr(1), "");
  files_.Put(folder + name, "");
  EXPECT_NE(Scan().find("list " + folder + name + "\n"), std::string::npos);
  EXPECT_EQ(playlists_.size(), 4u) << "one character less than the file before it";
  bool listed = false;
  for (const std::string& call : files_.log) listed |= call == "list " + longest + "\\*.*";
  EXPECT_TRUE(listed);
}

TEST_F(DeviceScanTest, GoesOnBehindEveryFault) {
  const auto count = [&] { return media_.size() + playlists_.size(); };
  long n = 0;
  test::SweepHeap([&] { Scan(); },
                  [&](bool failed) { EXPECT_GE(count(), failed ? n++ == 0 ? 0u : 2u : 6u); });
  test::Sweep([&](long call) {
    files_.FailAfter(call);
    Scan();
    const bool failed = files_.fault_triggered();
    EXPECT_GE(count(), failed ? call == 0 ? 0u : 3u : 6u);
    return failed;
  });
}

}  // namespace
}  // namespace kelvo
