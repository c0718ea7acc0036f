#include "catalog/tree/checks.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "tests/catalog/text_tree.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::TextTree;
using test::Utf8;

std::string Checks(TextTree& tree) {
  std::string text;
  for (size_t i = 1; i < tree.nodes.size(); ++i) text += tree.nodes[i].checked ? 'x' : '.';
  return text;
}

void Tap(TextTree& tree, TreeNode node) {
  CheckBoxTapped(tree, node);
  tree.SetChecked(node, !tree.IsChecked(node));  // the control's part
}

// The rules written as recursions.
void Below(TextTree& tree, TreeNode node, bool invert, bool checked) {
  for (const TreeNode child : tree.nodes[node].children) {
    const bool was = tree.nodes[child].checked;
    tree.nodes[child].checked = invert ? !was : checked;
    if (invert && was) {
      for (TreeNode up = tree.nodes[child].parent; up; up = tree.nodes[up].parent) {
        tree.nodes[up].checked = false;
      }
    }
    Below(tree, child, invert, checked);
  }
}

TEST(CheckRules, RandomSequencesAgreeWithTheRecursion) {
  std::mt19937 random(3);
  for (int round = 0; round < 50; ++round) {
    TextTree tree;
    for (int i = 0; i < 25; ++i) {
      tree.Add(random() % tree.nodes.size(), NodeKind::kAlbum, L"n");
    }
    if (round == 0) tree = TextTree();  // nothing in it: the root alone
    TextTree want = tree;
    for (int step = 0; step < 30; ++step) {
      const TreeNode node = random() % tree.nodes.size();
      const unsigned what = random() % 4;
      if (what == 0) {
        InvertChecksBelow(tree, node);
        Below(want, node, true, false);
      } else if (what < 3) {
        SetChecksBelow(tree, node, what == 1);
        Below(want, node, false, what == 1);
      } else if (node != kNoNode) {
        Tap(tree, node);
        const bool was = want.nodes[node].checked;
        if (!was) Below(want, node, false, true);
        for (TreeNode up = want.nodes[node].parent; was && up; up = want.nodes[up].parent) {
          want.nodes[up].checked = false;
        }
        want.nodes[node].checked = !was;
      }
      ASSERT_EQ(Checks(tree), Checks(want)) << round << ", " << step;
    }
  }
}

TEST(CheckRules, EveryOneOfManyCheckedFilesIsFound) {
  TextTree tree;
  EntryList media, playlist;
  for (int i = 0; i < 100; ++i) {
    ASSERT_TRUE(media.Add(test::Wide(std::to_string(i))));
    media.back().item = tree.Add(kNoNode, NodeKind::kFile, L"f");
  }
  SetChecksBelow(tree, kNoNode, true);
  AddCheckedFiles(tree, media, &playlist);
  ASSERT_EQ(playlist.size(), 100u);
  for (size_t i = 0; i < 100; ++i) EXPECT_EQ(Utf8(playlist[i].path.c_str()), std::to_string(i));
}

// Files of a tree, in an order of their own in the list; one has no node, one stands there twice.
class CheckedFilesTest : public testing::Test {
 protected:
  CheckedFilesTest() {
    const TreeNode group = tree_.Add(kNoNode, NodeKind::kArtist, L"A");
    for (const wchar_t* path : {L"\\none", L"\\c", L"\\b", L"\\a", L"\\a twin"}) {
      EXPECT_TRUE(media_.Add(path));
      media_.back().tag.Reset(HeapNew<TagBlock>());
    }
    for (size_t i = 3; i > 0; --i) media_[i].item = tree_.Add(group, NodeKind::kFile, L"f");
    media_[4].item = media_[3].item;
    media_[2].tag.Reset();
    media_[3].tag->title[0] = 'T';
    for (size_t i = 3; i > 1; --i) tree_.SetChecked(media_[i].item, true);
    tree_.SetChecked(group, true);
    // A file that the list does not know.
    tree_.SetChecked(tree_.Add(kNoNode, NodeKind::kFile, L"f"), true);
  }
  TextTree tree_;
  EntryList media_;
};

TEST_F(CheckedFilesTest, AreAddedInTheTreesOrderAsFarAsMemoryGoes) {
  std::set<std::string> seen;
  test::Sweep([&](long n) {
    EntryList playlist;
    bool failed;
    {
      const test::HeapFaults faults(n);
      AddCheckedFiles(tree_, media_, &playlist);
      failed = faults.triggered();
    }
    AddCheckedFiles(tree_, media_, &playlist);  // however often
    std::string added;
    for (const MediaEntry& entry : playlist) {
      added += Utf8(entry.path.c_str()) + (entry.tag ? entry.tag->title : "-");
      EXPECT_EQ(entry.item, kEntryFlag);
      EXPECT_NE(entry.tag.get(), media_[3].tag.get());
    }
    EXPECT_EQ(added == "\\aT\\b-\\aT\\b-", !failed || n == 0) << n << ": " << added;
    seen.insert(added);
    return failed;
  });
  // All (without memory for a table, too), one file's or its tag missing.
  EXPECT_EQ(seen, (std::set<std::string>{"\\aT\\b-\\aT\\b-", "\\b-\\aT\\b-", "\\a-\\b-\\aT\\b-",
                                         "\\aT\\aT\\b-"}));
}

TEST_F(CheckedFilesTest, AreFoundByTheirNodes) {
  EXPECT_EQ(IndexOfNode(media_, media_[4].item), 3u) << "the first of twins";
  EXPECT_EQ(EntryOfNode(media_, media_[1].item), &media_[1]);
  EXPECT_EQ(EntryOfNode(media_, kNoNode), nullptr);
  EXPECT_EQ(EntryOfNode(media_, 12345), nullptr);
  EXPECT_EQ(IndexOfNode(media_, 12345), media_.size());
}

}  // namespace
}  // namespace kelvo
