#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>
#include <string.h>

#include <random>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::TextTree;
using test::Wide;

struct File {
  std::string path;  // "-": none
  bool tagged = false;
  std::string title, artist, album, genre;
};

void Put(EntryList* list, const std::vector<File>& files) {
  for (const File& file : files) {
    MediaEntry* entry = list->Add(Wide(file.path));
    ASSERT_TRUE(entry);
    entry->item = 999;
    if (file.path == "-") entry->path.Clear();
    if (!file.tagged) continue;
    entry->tag.Reset(HeapNew<TagBlock>());
    strncpy(entry->tag->title, file.title.c_str(), 30);
    strncpy(entry->tag->artist, file.artist.c_str(), 30);
    strncpy(entry->tag->album, file.album.c_str(), 30);
    strncpy(entry->tag->genre, file.genre.c_str(), 30);
  }
}

class BuildTreeTest : public testing::Test {
 protected:
  BuildTreeTest() {
    Put(&list_, {{"\\Music\\b.mp3", true, "Two", "Sine", "Waves", "Jazz"},
                 {"\\Music\\c.mp3", true, "Two", "SINE", "waves", "jazz"},
                 {"\\plain.mp3", false, "", "", "", ""},
                 {"\\Music\\Deep\\d.ogg", true, "", "Square", "Waves", ""},
                 {"\\Music2\\e.mp3", true, "Five", "Sine", "", "Jazz"}});
  }
  EntryList list_;
};

TEST_F(BuildTreeTest, FoldersAreSortedEachOnceTheInnerOnesFirst) {
  TextTree tree;
  BuildTree(list_, ToGroupingOrder(7), tree);
  // A neighbour whose name begins with a folder's name goes into it.
  EXPECT_EQ(tree.Text(),
            "D Music\n D \n  F e.mp3\n D Deep\n  F d.ogg\n F b.mp3\n F c.mp3\nF plain.mp3\n");
  EXPECT_EQ(tree.sorted, "l3 f3 l2 f2 l1 f1 l0 f0 ");
  for (const uint32_t bad : {0u, 8u}) EXPECT_EQ(static_cast<uint32_t>(ToGroupingOrder(bad)), 1u);
}

TEST_F(BuildTreeTest, WithoutMemoryTheTreeStaysEmpty) {
  for (uint32_t order = 1; order <= 7; ++order) {
    TextTree tree;
    test::SweepHeap(
        [&] {
          tree = TextTree();
          BuildTree(list_, static_cast<GroupingOrder>(order), tree);
        },
        [&](bool failed) {
          EXPECT_EQ(tree.Text().empty(), failed);
          for (const MediaEntry& entry : list_) EXPECT_EQ(entry.item == kNoNode, failed);
        });
  }
}

std::string Folded(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  for (size_t at; (at = text.find("\u00c9")) != std::string::npos;) text.replace(at, 2, "\u00e9");
  return text;
}

// The walk as it is meant, over the files' own texts: the first file that is left makes a group,
// which takes everything that belongs into it; also when it cannot be inserted. All is sorted by
// its label, then the folders by theirs; a folder comes before a file of its name.
class LiteralWalk {
 public:
  LiteralWalk(const std::vector<File>& files, uint32_t order, TextTree& tree)
      : files_(files), tree_(tree) {
    constexpr NodeKind g = NodeKind::kGenre, a = NodeKind::kArtist, l = NodeKind::kAlbum;
    const std::vector<NodeKind> kinds[] = {{g, a, l}, {g, l, a}, {a, l}, {l, a}, {l}, {a}, {}};
    std::vector<size_t> all;
    for (size_t i = 0; i < files.size(); ++i) {
      if (files[i].path != "-") all.push_back(i);
    }
    order == 7 ? Folders(all, kNoNode, 0) : Groups(all, kNoNode, kinds[order - 1]);
    const auto& nodes = tree.nodes;
    for (TreeNode parent = 0; parent < nodes.size(); ++parent) {
      tree.Sort(parent, [&](TreeNode x, TreeNode y) {
        const int labels = nodes[x].label.compare(nodes[y].label);
        return labels != 0 ? labels < 0 : tree.IsFile(y) && !tree.IsFile(x);
      });
      if (order < 7) continue;
      tree.Sort(parent, [&](TreeNode x, TreeNode y) {
        return !tree.IsFile(x) && !tree.IsFile(y) &&
               Folded(nodes[x].label) < Folded(nodes[y].label);
      });
    }
    for (const auto& [node, i] : placed_) tree.nodes[node].label += "#" + std::to_string(i);
  }

 private:
  void Groups(std::vector<size_t> left, TreeNode parent, std::vector<NodeKind> kinds) {
    while (!left.empty()) {
      const size_t first = left[0];
      if (kinds.empty()) {
        left.erase(left.begin());
        Place(first, parent, TextOf(first, NodeKind::kFile));
        continue;
      }
      const std::string text = TextOf(first, kinds[0]);
      const auto inside =
          Split(left, [&](size_t i) { return Folded(TextOf(i, kinds[0])) == Folded(text); });
      const TreeNode node = tree_.Add(parent, kinds[0], Wide(text));
      if (node != kNoNode) Groups(inside, node, {kinds.begin() + 1, kinds.end()});
    }
  }
  void Folders(std::vector<size_t> left, TreeNode parent, size_t length) {
    while (!left.empty()) {
      const size_t first = left[0];
      const std::string& path = files_[first].path;
      const size_t slash = path.find('\\', length + 1);
      if (slash == std::string::npos) {
        left.erase(left.begin());
        Place(first, parent, path.substr(path.rfind('\\') + 1));
        continue;
      }
      const std::string cut = Folded(path.substr(0, slash));
      const auto inside =
          Split(left, [&](size_t i) { return Folded(files_[i].path.substr(0, slash)) == cut; });
      const TreeNode node =
          tree_.Add(parent, NodeKind::kFolder, Wide(path.substr(length + 1, slash - length - 1)));
      if (node != kNoNode) Folders(inside, node, slash);
    }
  }
  // Takes those that fit out of `left`.
  template <class Fits>
  std::vector<size_t> Split(std::vector<size_t>& left, Fits fits) {
    std::vector<size_t> inside;
    for (const size_t i : left) {
      if (fits(i)) inside.push_back(i);
    }
    left.erase(std::remove_if(left.begin(), left.end(), fits), left.end());
    return inside;
  }
  void Place(size_t i, TreeNode parent, const std::string& label) {
    const TreeNode node = tree_.Add(parent, NodeKind::kFile, Wide(label));
    if (node != kNoNode) placed_.emplace_back(node, i);
  }
  std::string TextOf(size_t i, NodeKind kind) {
    const File& file = files_[i];
    const std::string& field = kind == NodeKind::kGenre    ? file.genre
                               : kind == NodeKind::kArtist ? file.artist
                               : kind == NodeKind::kAlbum  ? file.album
                                                           : file.title;
    if (file.tagged && !field.empty()) return field;
    if (kind != NodeKind::kFile) return "Unknown";
    return file.path.size() < 2 ? "" : file.path.substr(file.path.rfind('\\') + 1);
  }

  const std::vector<File>& files_;
  TextTree& tree_;
  std::vector<std::pair<TreeNode, size_t>> placed_;
};

// Texts that are the same but for their case, fill their field, or share a 32-bit hash; names that
// go on where others end, that are long or empty; files named like folders; paths without a
// backslash in front or anywhere, twice, or not there. Also with a node that cannot be inserted.
TEST(BuildTreeRandom, IsTheTreeOfTheLiteralWalk) {
  std::mt19937 random(20);
  const std::string thirty = "123456789012345678901234567890";
  const std::string words[] = {"Sine", "SINE", "sinE ", "",       "Square",
                               "Saw",  thirty, "s",     "liquid", "costarring"};
  const std::string names[] = {"Music", "MUSIC", "Music2",     "music2x",    "Mus",
                               "",      "a.mp3", "Musi\u00e9", "MUSI\u00c9", thirty + thirty};
  const auto path = [&] {
    std::string text = random() % 4 ? "\\" : "";
    if (random() % 2) {
      for (size_t depth = random() % 5; depth > 0; --depth) text += names[random() % 10] + "\\";
      return text + names[random() % 10];
    }
    for (size_t length = random() % 9; length > 0; --length) text += "aAb\\\\"[random() % 5];
    return text;
  };
  for (int round = 0; round < 60; ++round) {
    std::vector<File> files;
    std::string all, failing;
    for (size_t n = random() % 30; n > 0; --n) {
      File file = {random() % 12 ? path() : "-", random() % 5 != 0, "", "", "", ""};
      for (std::string* text : {&file.title, &file.artist, &file.album, &file.genre}) {
        *text = words[random() % 10];
      }
      files.insert(files.end(), random() % 8 ? 1 : 2, file);
      all += file.path + "|" + file.artist + "\n";
    }
    EntryList list;
    Put(&list, files);
    for (uint32_t run = 0; run < 14; ++run) {
      const uint32_t order = run / 2 + 1;
      SCOPED_TRACE(all + std::to_string(order) + failing);
      TextTree want, got;
      want.failing = got.failing = failing;
      LiteralWalk(files, order, want);
      BuildTree(list, static_cast<GroupingOrder>(order), got);
      const size_t count = want.nodes.size();
      failing = run % 2 == 0 && count > 1 ? got.PathOf(1 + files.size() * 7 % (count - 1)) : "";
      for (size_t i = 0; i < files.size(); ++i) {
        if (list[i].item != kNoNode) got.nodes[list[i].item].label += "#" + std::to_string(i);
      }
      ASSERT_EQ(got.Text(), want.Text());
    }
  }
}

}  // namespace
}  // namespace kelvo
