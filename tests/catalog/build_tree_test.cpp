#include "catalog/tree/build_tree.h"

#include <gtest/gtest.h>
#include <string.h>

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

}  // namespace
}  // namespace kelvo
