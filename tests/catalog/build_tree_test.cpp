#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <random>

#include "catalog/media/display_text.h"
#include "catalog/tree/checked_files.h"
#include "tests/catalog/text_tree.h"
#include "tests/support/heap_faults.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::TextTree;
using test::Utf8;
using test::Wide;

struct File {
  const char* path;
  const char* title;  // null: no tag
  const char* artist;
  const char* album;
  const char* genre;
};

void Put(EntryList* list, const File& file) {
  MediaEntry* entry = list->Add(Wide(file.path));
  ASSERT_TRUE(entry);
  if (!file.title) return;
  entry->tag.Reset(HeapNew<TagBlock>());
  strncpy(entry->tag->title, file.title, 30);
  strncpy(entry->tag->artist, file.artist, 30);
  strncpy(entry->tag->album, file.album, 30);
  strncpy(entry->tag->genre, file.genre, 30);
}

const File kFiles[] = {
    {"\\Music\\b.mp3", "Two", "Sine", "Waves", "Jazz"},
    {"\\Music\\c.mp3", "Two", "SINE", "waves", "jazz"},
    {"\\plain.mp3", nullptr, "", "", ""},
    {"\\Music\\Deep\\d.ogg", "", "Square", "Waves", ""},
    {"\\Music2\\e.mp3", "Five", "Sine", "", "Jazz"},
};

class BuildTreeTest : public testing::Test {
 protected:
  BuildTreeTest() {
    for (const File& file : kFiles) Put(&list_, file);
  }
  std::string Built(GroupingOrder order) {
    TextTree tree;
    BuildTree(list_, order, tree);
    for (const MediaEntry& entry : list_) {
      EXPECT_TRUE(entry.item != kNoNode && tree.IsFile(entry.item));
    }
    return tree.Text();
  }
  EntryList list_;
};

TEST_F(BuildTreeTest, GroupsInEveryOrder) {
  struct Case {
    GroupingOrder order;
    const char* want;
  } const cases[] = {
      {GroupingOrder::kGenreArtistAlbum,
       "G Jazz\n A Sine\n  L Waves\n   F Two\n   F Two\n  L Unknown\n   F Five\n"
       "G Unknown\n A Unknown\n  L Unknown\n   F plain.mp3\n A Square\n  L Waves\n   F d.ogg\n"},
      {GroupingOrder::kGenreAlbumArtist,
       "G Jazz\n L Waves\n  A Sine\n   F Two\n   F Two\n L Unknown\n  A Sine\n   F Five\n"
       "G Unknown\n L Unknown\n  A Unknown\n   F plain.mp3\n L Waves\n  A Square\n   F d.ogg\n"},
      {GroupingOrder::kArtistAlbum,
       "A Sine\n L Waves\n  F Two\n  F Two\n L Unknown\n  F Five\n"
       "A Unknown\n L Unknown\n  F plain.mp3\nA Square\n L Waves\n  F d.ogg\n"},
      {GroupingOrder::kAlbumArtist,
       "L Waves\n A Sine\n  F Two\n  F Two\n A Square\n  F d.ogg\n"
       "L Unknown\n A Unknown\n  F plain.mp3\n A Sine\n  F Five\n"},
      {GroupingOrder::kAlbum,
       "L Waves\n F Two\n F Two\n F d.ogg\nL Unknown\n F plain.mp3\n F Five\n"},
      {GroupingOrder::kArtist,
       "A Sine\n F Two\n F Two\n F Five\nA Unknown\n F plain.mp3\nA Square\n F d.ogg\n"},
      // A neighbour whose name begins with a folder's name goes into it.
      {GroupingOrder::kFolders,
       "D Music\n F b.mp3\n F c.mp3\n D Deep\n  F d.ogg\n D \n  F e.mp3\nF plain.mp3\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.order));
    EXPECT_EQ(Built(c.order), c.want);
  }
  for (const uint32_t bad : {0u, 8u, 0xFFFFFFFFu}) {
    EXPECT_EQ(ToGroupingOrder(bad), GroupingOrder::kGenreArtistAlbum);
  }
}

TEST_F(BuildTreeTest, EveryFolderIsSortedOnce) {
  TextTree tree;
  BuildFolders(list_, tree);
  EXPECT_EQ(tree.sorted.size(), 4u);
  EXPECT_EQ(tree.sorted.back(), kNoNode);
}

TEST_F(BuildTreeTest, PassesOverEntriesWithoutPath) {
  list_[1].path.Clear();
  list_[1].item = 77;
  for (const GroupingOrder order : {GroupingOrder::kArtist, GroupingOrder::kFolders}) {
    TextTree tree;
    BuildTree(list_, order, tree);
    EXPECT_EQ(list_[1].item, kNoNode);
    EXPECT_EQ(tree.Text().find("c.mp3"), std::string::npos);
  }
}

// The walk as it is described, with comparisons of the texts themselves; what cannot be inserted
// takes its group with it.
class LiteralWalk {
 public:
  LiteralWalk(EntryList& list, TextTree& tree) : list_(list), tree_(tree), done_(list.size()) {
    for (MediaEntry& entry : list) entry.item = kNoNode;
  }
  void Groups(const std::vector<NodeKind>& kinds, TreeNode parent, size_t from,
              std::vector<std::pair<NodeKind, std::string>> above) {
    for (size_t i = from; i < list_.size(); ++i) {
      if (done_[i] || !Has(i, above)) continue;
      const size_t level = above.size();
      if (level == kinds.size()) {
        char title[kTextCapacity];
        TitleText(list_[i], title);
        list_[i].item = tree_.Add(parent, NodeKind::kFile, Wide(title));
        done_[i] = true;
        continue;
      }
      const std::string text = TextOf(i, kinds[level]);
      const TreeNode node = tree_.Add(parent, kinds[level], Wide(text));
      auto inside = above;
      inside.emplace_back(kinds[level], text);
      if (node != kNoNode) {
        Groups(kinds, node, i, inside);
      } else {
        for (size_t k = i; k < list_.size(); ++k) done_[k] = done_[k] || Has(k, inside);
      }
    }
  }
  void Folders(TreeNode parent, const std::string& folder) {
    for (size_t i = 0; i < list_.size(); ++i) {
      const std::string path = Utf8(list_[i].path.c_str());
      if (!list_[i].path.has_value() || done_[i] || !Begins(path, folder)) continue;
      const size_t slash = path.find('\\', folder.size() + 1);
      if (slash == std::string::npos) {
        list_[i].item = tree_.Add(parent, NodeKind::kFile, FileNameOf(list_[i].path.c_str()));
        done_[i] = true;
        continue;
      }
      const std::string cut = path.substr(0, slash);
      const TreeNode node =
          tree_.Add(parent, NodeKind::kFolder, Wide(cut.substr(folder.size() + 1)));
      if (node != kNoNode) {
        Folders(node, cut);
      } else {
        for (size_t k = i; k < list_.size(); ++k) {
          done_[k] = done_[k] || Begins(Utf8(list_[k].path.c_str()), cut);
        }
      }
    }
  }

 private:
  static bool Begins(const std::string& path, const std::string& folder) {
    const auto same = [](char a, char b) {
      const auto fold = [](char c) { return FoldAscii(c == '\x89' ? '\xA9' : c); };  // É to é
      return fold(a) == fold(b);
    };
    return path.size() >= folder.size() &&
           std::equal(folder.begin(), folder.end(), path.begin(), same);
  }
  std::string TextOf(size_t i, NodeKind kind) const {
    TagField text;
    if (kind == NodeKind::kGenre) GenreText(list_[i], text);
    if (kind == NodeKind::kArtist) ArtistText(list_[i], text);
    if (kind == NodeKind::kAlbum) AlbumText(list_[i], text);
    return text;
  }
  bool Has(size_t i, const std::vector<std::pair<NodeKind, std::string>>& above) const {
    for (const auto& group : above) {
      if (!EqualAsciiNoCase(TextOf(i, group.first).c_str(), group.second.c_str())) return false;
    }
    return true;
  }

  EntryList& list_;
  TextTree& tree_;
  std::vector<bool> done_;
};

// Both trees of one list, also with a node that cannot be inserted. The order in which the nodes
// are inserted may differ, not that of siblings.
void ExpectTheLiteralTree(EntryList& list, GroupingOrder order, const std::string& failing,
                          std::string* inserted) {
  const NodeKind g = NodeKind::kGenre, a = NodeKind::kArtist, l = NodeKind::kAlbum;
  const std::vector<NodeKind> kinds[] = {{g, a, l}, {g, l, a}, {a, l}, {l, a}, {l}, {a}};
  TextTree want;
  want.failing = failing;
  LiteralWalk walk(list, want);
  if (order == GroupingOrder::kFolders) {
    walk.Folders(kNoNode, "");
  } else {
    walk.Groups(kinds[static_cast<uint32_t>(order) - 1], kNoNode, 0, {});
  }
  std::vector<uintptr_t> items;
  for (MediaEntry& entry : list) items.push_back(std::exchange(entry.item, 999));
  TextTree got;
  got.failing = failing;
  BuildTree(list, order, got);
  ASSERT_EQ(got.Text(), want.Text());
  for (size_t i = 0; i < list.size(); ++i) {
    ASSERT_EQ(list[i].item == kNoNode, items[i] == kNoNode) << i;
    ASSERT_EQ(got.LineOf(list[i].item), want.LineOf(items[i])) << i;
  }
  const size_t count = want.nodes.size();
  if (inserted) *inserted = count > 1 ? want.PathOf(1 + list.size() * 7 % (count - 1)) : "";
}

void ExpectTheLiteralTrees(EntryList& list, GroupingOrder order) {
  std::string node;
  ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTree(list, order, "", &node));
  SCOPED_TRACE("failing " + node);
  ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTree(list, order, node, nullptr));
}

TEST(BuildTreeRandom, IsTheTreeOfTheLiteralWalk) {
  std::mt19937 random(20);
  // The last two have the same 32-bit FNV hash.
  const char* const words[] = {"Sine", "SINE",  "sinE ", "",       "Square",
                               "Saw",  "Noise", "s",     "liquid", "costarring"};
  const auto word = [&] { return words[random() % 10]; };
  for (int round = 0; round < 40; ++round) {
    EntryList list;
    for (size_t n = random() % 40; n > 0; --n) {
      std::string path;
      for (size_t depth = random() % 4; depth > 0; --depth) path += std::string("\\") + word();
      path += "\\" + std::to_string(random() % 30) + ".mp3";
      const bool tagged = random() % 5 != 0;
      Put(&list, {path.c_str(), tagged ? word() : nullptr, word(), word(), word()});
    }
    for (uint32_t order = 1; order <= 7; ++order) {
      SCOPED_TRACE(std::to_string(round) + " order " + std::to_string(order));
      ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTrees(list, static_cast<GroupingOrder>(order)));
    }
  }
}

// Names that go on where others end, that are the same but for their case, that are empty; files
// named like folders; paths without a backslash in front or anywhere, twice, or not there.
TEST(BuildTreeRandom, FoldersOfHostilePathsAreThoseOfTheLiteralWalk) {
  std::mt19937 random(7);
  const char* const names[] = {"Music", "MUSIC", "Music2", "music2x",    "Mus",
                               "",      "a.mp3", "A.MP3x", "Musi\u00e9", "MUSI\u00c9"};
  const auto path = [&] {
    std::string text = random() % 4 ? "\\" : "";
    if (random() % 2) {
      for (size_t depth = random() % 5; depth > 0; --depth) {
        text += std::string(names[random() % 10]) + "\\";
      }
      return text + names[random() % 10];
    }
    for (size_t length = random() % 9; length > 0; --length) text += "aAb\\\\"[random() % 5];
    return text;
  };
  for (int round = 0; round < 1000; ++round) {
    EntryList list;
    std::string all;
    for (size_t n = random() % 25; n > 0; --n) {
      const std::string text = path();
      for (size_t copies = random() % 8 ? 1 : 2; copies > 0; --copies) {
        Put(&list, {text.c_str(), nullptr, "", "", ""});
        all += text + "\n";
      }
      if (random() % 10 == 0) list.back().path.Clear();
    }
    SCOPED_TRACE(all);
    ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTrees(list, GroupingOrder::kFolders));
  }
}

TEST_F(BuildTreeTest, WithoutMemoryTheTreeStaysEmpty) {
  for (uint32_t order = 1; order <= 7; ++order) {
    for (long n = 0;; ++n) {
      ASSERT_LT(n, 20);
      TextTree tree;
      bool triggered;
      {
        HeapFaults faults(n);
        BuildTree(list_, static_cast<GroupingOrder>(order), tree);
        triggered = faults.triggered();
      }
      EXPECT_EQ(tree.Text().empty(), triggered);
      if (!triggered) break;
      for (const MediaEntry& entry : list_) EXPECT_EQ(entry.item, kNoNode);
    }
  }
}

TEST_F(BuildTreeTest, AddsCheckedFilesInTheTreesOrder) {
  TextTree tree;
  BuildTree(list_, GroupingOrder::kArtist, tree);
  EntryList playlist;
  tree.SetChecked(tree.FirstChild(kNoNode), true);  // a group alone adds nothing
  AddCheckedFiles(tree, list_, &playlist);
  EXPECT_EQ(playlist.size(), 0u);
  tree.SetChecked(list_[4].item, true);
  tree.SetChecked(list_[2].item, true);
  AddCheckedFiles(tree, list_, &playlist);
  AddCheckedFiles(tree, list_, &playlist);
  ASSERT_EQ(playlist.size(), 4u);
  EXPECT_EQ(Utf8(playlist[0].path.c_str()), "\\Music2\\e.mp3");
  EXPECT_STREQ(playlist[2].tag->title, "Five");
  EXPECT_NE(playlist[0].tag.get(), list_[4].tag.get());
  EXPECT_FALSE(playlist[1].tag);
  EXPECT_EQ(playlist[3].item, 1u);
  for (long n = 0; n < 6; ++n) {
    EntryList fresh;
    HeapFaults faults(n);
    AddCheckedFiles(tree, list_, &fresh);
    EXPECT_GE(fresh.size() + (fresh.size() > 0 && fresh[0].tag ? 1 : 0), 1u) << n;
  }
}

}  // namespace
}  // namespace kelvo
