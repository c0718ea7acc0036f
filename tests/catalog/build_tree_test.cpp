#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>
#include <string.h>

#include <random>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::TextTree;
using test::Wide;

struct File {
  std::string path;  // "-": none
  bool tagged;
  std::string title, artist, album, genre;
};

void Put(EntryList* list, const File& file) {
  MediaEntry* entry = list->Add(Wide(file.path));
  ASSERT_TRUE(entry);
  entry->item = 999;
  if (file.path == "-") entry->path.Clear();
  if (!file.tagged) return;
  entry->tag.Reset(HeapNew<TagBlock>());
  strncpy(entry->tag->title, file.title.c_str(), 30);
  strncpy(entry->tag->artist, file.artist.c_str(), 30);
  strncpy(entry->tag->album, file.album.c_str(), 30);
  strncpy(entry->tag->genre, file.genre.c_str(), 30);
}

const File kFiles[] = {
    {"\\Music\\b.mp3", true, "Two", "Sine", "Waves", "Jazz"},
    {"\\Music\\c.mp3", true, "Two", "SINE", "waves", "jazz"},
    {"\\plain.mp3", false, "", "", "", ""},
    {"\\Music\\Deep\\d.ogg", true, "", "Square", "Waves", ""},
    {"\\Music2\\e.mp3", true, "Five", "Sine", "", "Jazz"},
};

class BuildTreeTest : public testing::Test {
 protected:
  BuildTreeTest() {
    for (const File& file : kFiles) Put(&list_, file);
  }
  EntryList list_;
};

TEST_F(BuildTreeTest, GroupsInEveryOrder) {
  const char* const want[] = {
      "G Jazz\n A Sine\n  L Waves\n   F Two\n   F Two\n  L Unknown\n   F Five\n"
      "G Unknown\n A Unknown\n  L Unknown\n   F plain.mp3\n A Square\n  L Waves\n   F d.ogg\n",
      "G Jazz\n L Waves\n  A Sine\n   F Two\n   F Two\n L Unknown\n  A Sine\n   F Five\n"
      "G Unknown\n L Unknown\n  A Unknown\n   F plain.mp3\n L Waves\n  A Square\n   F d.ogg\n",
      "A Sine\n L Waves\n  F Two\n  F Two\n L Unknown\n  F Five\n"
      "A Unknown\n L Unknown\n  F plain.mp3\nA Square\n L Waves\n  F d.ogg\n",
      "L Waves\n A Sine\n  F Two\n  F Two\n A Square\n  F d.ogg\n"
      "L Unknown\n A Unknown\n  F plain.mp3\n A Sine\n  F Five\n",
      "L Waves\n F Two\n F Two\n F d.ogg\nL Unknown\n F plain.mp3\n F Five\n",
      "A Sine\n F Two\n F Two\n F Five\nA Unknown\n F plain.mp3\nA Square\n F d.ogg\n",
      // A neighbour whose name begins with a folder's name goes into it.
      "D Music\n F b.mp3\n F c.mp3\n D Deep\n  F d.ogg\n D \n  F e.mp3\nF plain.mp3\n",
  };
  for (uint32_t order = 1; order <= 7; ++order) {
    TextTree tree;
    BuildTree(list_, ToGroupingOrder(order), tree);
    EXPECT_EQ(tree.Text(), want[order - 1]) << order;
    EXPECT_EQ(tree.sorted,
              order == 7 ? std::vector<TreeNode>({7, 5, 1, kNoNode}) : std::vector<TreeNode>())
        << "each folder once, the inner ones first";
  }
  for (const uint32_t bad : {0u, 8u, 0xFFFFFFFFu}) {
    EXPECT_EQ(static_cast<uint32_t>(ToGroupingOrder(bad)), 1u);
  }
}

// The walk as it is meant, over the files' own texts; what cannot be inserted takes its group
// along.
class LiteralWalk {
 public:
  LiteralWalk(const std::vector<File>& files, TextTree& tree)
      : items(files.size(), kNoNode), files_(files), tree_(tree), done_(files.size()) {
    for (size_t i = 0; i < files.size(); ++i) done_[i] = files[i].path == "-";
  }
  void Walk(uint32_t order) {
    constexpr NodeKind g = NodeKind::kGenre, a = NodeKind::kArtist, l = NodeKind::kAlbum;
    const std::vector<NodeKind> kinds[] = {{g, a, l}, {g, l, a}, {a, l}, {l, a}, {l}, {a}};
    order == 7 ? Folders(kNoNode, "") : Groups(kinds[order - 1], kNoNode, 0, {});
  }

  std::vector<TreeNode> items;  // of each file

 private:
  using Group = std::pair<NodeKind, std::string>;

  void Groups(const std::vector<NodeKind>& kinds, TreeNode parent, size_t from,
              const std::vector<Group>& above) {
    for (size_t i = from; i < files_.size(); ++i) {
      if (done_[i] || !IsIn(i, above)) continue;
      if (above.size() == kinds.size()) {
        Place(i, parent, TextOf(files_[i], NodeKind::kFile));
        continue;
      }
      const NodeKind kind = kinds[above.size()];
      const TreeNode node = tree_.Add(parent, kind, Wide(TextOf(files_[i], kind)));
      auto inside = above;
      inside.emplace_back(kind, TextOf(files_[i], kind));
      if (node != kNoNode) Groups(kinds, node, i, inside);
      for (size_t k = i; k < files_.size(); ++k) done_[k] = done_[k] || IsIn(k, inside);
    }
  }
  void Folders(TreeNode parent, const std::string& folder) {
    for (size_t i = 0; i < files_.size(); ++i) {
      const std::string& path = files_[i].path;
      if (done_[i] || !Begins(path, folder)) continue;
      const size_t slash = path.find('\\', folder.size() + 1);
      if (slash == std::string::npos) {
        Place(i, parent, NameOf(path));
        continue;
      }
      const std::string cut = path.substr(0, slash);
      const std::string label = cut.substr(folder.size() + 1);
      const TreeNode node = tree_.Add(parent, NodeKind::kFolder, Wide(label));
      if (node != kNoNode) Folders(node, cut);
      for (size_t k = i; k < files_.size(); ++k) done_[k] = done_[k] || Begins(files_[k].path, cut);
    }
  }
  void Place(size_t i, TreeNode parent, const std::string& label) {
    items[i] = tree_.Add(parent, NodeKind::kFile, Wide(label));
    done_[i] = true;
  }

  static std::string Folded(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
  }
  static bool Begins(const std::string& path, const std::string& folder) {
    return Folded(path.substr(0, folder.size())) == Folded(folder);
  }
  static std::string NameOf(const std::string& path) { return path.substr(path.rfind('\\') + 1); }
  static std::string TextOf(const File& file, NodeKind kind) {
    const std::string& field = kind == NodeKind::kGenre    ? file.genre
                               : kind == NodeKind::kArtist ? file.artist
                               : kind == NodeKind::kAlbum  ? file.album
                                                           : file.title;
    if (file.tagged && !field.empty()) return field;
    if (kind != NodeKind::kFile) return "Unknown";
    return file.path.size() < 2 ? "" : NameOf(file.path);
  }
  bool IsIn(size_t i, const std::vector<Group>& groups) const {
    for (const Group& group : groups) {
      if (Folded(TextOf(files_[i], group.first)) != Folded(group.second)) return false;
    }
    return true;
  }

  const std::vector<File>& files_;
  TextTree& tree_;
  std::vector<bool> done_;
};

// Both trees of the files, also with a node that cannot be inserted. The order in which the nodes
// are inserted may differ, not that of siblings.
void ExpectTheLiteralTree(const std::vector<File>& files, uint32_t order,
                          const std::string& failing, std::string* inserted) {
  EntryList list;
  for (const File& file : files) Put(&list, file);
  TextTree want, got;
  want.failing = got.failing = failing;
  LiteralWalk walk(files, want);
  walk.Walk(order);
  BuildTree(list, static_cast<GroupingOrder>(order), got);
  ASSERT_EQ(got.Text(), want.Text());
  for (size_t i = 0; i < files.size(); ++i) {
    ASSERT_EQ(list[i].item == kNoNode, walk.items[i] == kNoNode) << i;
    ASSERT_EQ(got.LineOf(list[i].item), want.LineOf(walk.items[i])) << i;
  }
  const size_t count = want.nodes.size();
  if (inserted) *inserted = count > 1 ? want.PathOf(1 + files.size() * 7 % (count - 1)) : "";
}

// Texts that are the same but for their case, fill their field, or share a 32-bit hash; names that
// go on where others end, that are long or empty; files named like folders; paths without a
// backslash in front or anywhere, twice, or not there.
TEST(BuildTreeRandom, IsTheTreeOfTheLiteralWalk) {
  std::mt19937 random(20);
  const std::string thirty = "123456789012345678901234567890";
  const std::string words[] = {"Sine", "SINE", "sinE ", "",       "Square",
                               "Saw",  thirty, "s",     "liquid", "costarring"};
  const std::string names[] = {"Music", "MUSIC", "Music2",     "music2x", "Mus",
                               "",      "a.mp3", "Musi\u00e9", "x",       thirty + thirty};
  const auto path = [&] {
    std::string text = random() % 4 ? "\\" : "";
    if (random() % 2) {
      for (size_t depth = random() % 5; depth > 0; --depth) text += names[random() % 10] + "\\";
      return text + names[random() % 10];
    }
    for (size_t length = random() % 9; length > 0; --length) text += "aAb\\\\"[random() % 5];
    return text;
  };
  for (int round = 0; round < 100; ++round) {
    std::vector<File> files;
    std::string all;
    for (size_t n = random() % 30; n > 0; --n) {
      File file = {random() % 12 ? path() : "-", random() % 5 != 0, "", "", "", ""};
      for (std::string* text : {&file.title, &file.artist, &file.album, &file.genre}) {
        *text = words[random() % 10];
      }
      files.insert(files.end(), random() % 8 ? 1 : 2, file);
      all += file.path + "|" + file.artist + "\n";
    }
    SCOPED_TRACE(all);
    for (uint32_t order = 1; order <= 7; ++order) {
      SCOPED_TRACE(order);
      std::string node;
      ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTree(files, order, "", &node));
      SCOPED_TRACE("failing " + node);
      ASSERT_NO_FATAL_FAILURE(ExpectTheLiteralTree(files, order, node, nullptr));
    }
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

}  // namespace
}  // namespace kelvo
