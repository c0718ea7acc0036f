#include "catalog/tree/check_rules.h"

namespace kelvo {
namespace {

// A group is shown as checked only while everything in it is.
void UncheckAncestors(CheckTree& tree, TreeNode node) noexcept {
  for (node = tree.Parent(node); node != kNoNode; node = tree.Parent(node)) {
    tree.SetChecked(node, false);
  }
}

}  // namespace

TreeNode NextBelow(CheckTree& tree, TreeNode top, TreeNode node) noexcept {
  const TreeNode child = tree.FirstChild(node);
  if (child != kNoNode) return child;
  while (node != top) {
    const TreeNode sibling = tree.NextSibling(node);
    if (sibling != kNoNode) return sibling;
    node = tree.Parent(node);
  }
  return kNoNode;
}

void SetChecksBelow(CheckTree& tree, TreeNode top, bool checked) noexcept {
  for (TreeNode node = NextBelow(tree, top, top); node != kNoNode;
       node = NextBelow(tree, top, node)) {
    tree.SetChecked(node, checked);
  }
}

void InvertChecksBelow(CheckTree& tree, TreeNode top) noexcept {
  for (TreeNode node = NextBelow(tree, top, top); node != kNoNode;
       node = NextBelow(tree, top, node)) {
    const bool was_checked = tree.IsChecked(node);
    tree.SetChecked(node, !was_checked);
    if (was_checked) UncheckAncestors(tree, node);
  }
}

void CheckBoxTapped(CheckTree& tree, TreeNode node) noexcept {
  if (tree.IsChecked(node)) {
    UncheckAncestors(tree, node);
  } else {
    SetChecksBelow(tree, node, true);
  }
}

}  // namespace kelvo
