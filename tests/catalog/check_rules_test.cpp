#include "catalog/tree/check_rules.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/catalog/text_tree.h"

namespace kelvo {
namespace {

using test::TextTree;

// Artist (1) with two albums (2, 4) of a file each (3, 5), and an artist (6) with a file (7).
TextTree Sample() {
  TextTree tree;
  const TreeNode artist = tree.Add(kNoNode, NodeKind::kArtist, L"A");
  for (const wchar_t* album : {L"x", L"y"}) {
    tree.Add(tree.Add(artist, NodeKind::kAlbum, album), NodeKind::kFile, L"f");
  }
  tree.Add(tree.Add(kNoNode, NodeKind::kArtist, L"B"), NodeKind::kFile, L"f");
  return tree;
}

std::string Checks(TextTree& tree) {
  std::string text;
  for (size_t i = 1; i < tree.nodes.size(); ++i) text += tree.nodes[i].checked ? 'x' : '.';
  return text;
}

void Tap(TextTree& tree, TreeNode node) {
  CheckBoxTapped(tree, node);
  tree.SetChecked(node, !tree.IsChecked(node));  // the control's part
}

TEST(CheckRules, GroupsAndFilesHangTogether) {
  TextTree tree = Sample();
  Tap(tree, 1);
  EXPECT_EQ(Checks(tree), "xxxxx..");
  Tap(tree, 3);  // a file: its groups are no longer complete
  EXPECT_EQ(Checks(tree), "...xx..");
  Tap(tree, 3);
  EXPECT_EQ(Checks(tree), "..xxx..") << "checking a file checks no group";
  InvertChecksBelow(tree, kNoNode);
  EXPECT_EQ(Checks(tree), ".....xx");
  SetChecksBelow(tree, kNoNode, true);
  EXPECT_EQ(Checks(tree), "xxxxxxx");
  SetChecksBelow(tree, 1, false);
  EXPECT_EQ(Checks(tree), "x....xx") << "not the node itself";
}

TEST(CheckRules, AnEmptyTreeHasNothingToCheck) {
  TextTree tree;
  SetChecksBelow(tree, kNoNode, true);
  InvertChecksBelow(tree, kNoNode);
  EXPECT_EQ(NextBelow(tree, kNoNode, kNoNode), kNoNode);
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

}  // namespace
}  // namespace kelvo
