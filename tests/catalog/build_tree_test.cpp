#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::Text;

// What there is memory for is there, and every entry knows its node.
TEST(BuildTreeTest, WithoutMemoryAnEntryHasNoNode) {
  EntryList list;
  for (const char* path :
       {"\\Music\\b.mp3", "\\Music\\c.mp3", "\\plain.mp3", "\\Music\\Deep\\d.ogg"}) {
    MediaEntry* entry = list.Add(test::Wide(path));
    ASSERT_TRUE(entry);
    entry->tag.Reset(HeapNew<TagBlock>());
    entry->tag->artist[0] = entry->tag->album[0] = entry->tag->genre[0] = path[1];
  }
  for (uint32_t order = 1; order <= 7; ++order) {
    CatalogTree tree;
    test::SweepHeap(
        [&] {
          tree.Clear();
          BuildTree(list, static_cast<GroupingOrder>(order), tree);
        },
        [&](bool failed) {
          size_t missing = 0, files = 0;
          for (const MediaEntry& entry : list) {
            missing += entry.item == kNoNode;
            EXPECT_TRUE(entry.item == kNoNode || tree.IsFile(entry.item));
          }
          for (TreeNode node = 1; node <= tree.last(); ++node) files += tree.IsFile(node);
          EXPECT_EQ(missing != 0, failed);
          EXPECT_EQ(files + missing, list.size());
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
