#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>
#include <string.h>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::Text;
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

TEST_F(BuildTreeTest, FoldersBeforeFilesAndNeighboursWithin) {
  CatalogTree tree;
  BuildTree(list_, ToGroupingOrder(7), tree);
  // A neighbour whose name begins with a folder's name goes into it.
  EXPECT_EQ(Text(tree),
            "D Music\n D \n  F e.mp3\n F b.mp3\n F c.mp3\n D Deep\n  F d.ogg\nF plain.mp3\n");
  for (const uint32_t bad : {0u, 8u}) EXPECT_EQ(static_cast<uint32_t>(ToGroupingOrder(bad)), 1u);
}

// What there is memory for is there, and every entry knows its node.
TEST_F(BuildTreeTest, WithoutMemoryAnEntryHasNoNode) {
  for (uint32_t order = 1; order <= 7; ++order) {
    CatalogTree tree;
    test::SweepHeap(
        [&] {
          tree.Clear();
          BuildTree(list_, static_cast<GroupingOrder>(order), tree);
        },
        [&](bool failed) {
          size_t missing = 0, files = 0;
          for (const MediaEntry& entry : list_) {
            missing += entry.item == kNoNode;
            EXPECT_TRUE(entry.item == kNoNode || tree.IsFile(entry.item));
          }
          for (TreeNode node = 1; node <= tree.last(); ++node) files += tree.IsFile(node);
          EXPECT_EQ(missing != 0, failed);
          EXPECT_EQ(files + missing, list_.size());
        });
  }
}

// Equal labels stay as they are; a file is equal to every folder, and whoever sorts must not mind.
TEST(CatalogTreeTest, SortsChildrenAndRemovesNodes) {
  CatalogTree tree;
  for (const char* label : {"d", "B", "D", "a", "b", "c"}) {
    const bool file = label[0] == 'd' || label[0] == 'a';
    tree.Add(kNoNode, file ? NodeKind::kFile : NodeKind::kFolder, test::Wide(label));
  }
  for (const char* label : {"y", "x"}) tree.Add(2, NodeKind::kFile, test::Wide(label));
  tree.SortLabels(2);
  tree.SortLabels(kNoNode);
  EXPECT_EQ(Text(tree), "F a\nD B\n F x\n F y\nD b\nD c\nF d\nD D\n");
  for (const TreeNode node : {2, 3, 4}) tree.Remove(node);
  EXPECT_EQ(Text(tree), "D b\nD c\nF d\n");
  for (const TreeNode node : {0, 2, 3, 4, 7, 8, 9}) EXPECT_FALSE(tree.Has(node)) << node;
}

}  // namespace
}  // namespace kelvo
