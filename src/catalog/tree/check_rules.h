// How the check boxes of groups and files hang together.
#pragma once

#include "catalog/tree/tree_sink.h"

namespace kelvo {

// The tree as the rules see it: the tree control, or a plain tree in tests. kNoNode as a node means
// the root, which has no check box.
class CheckTree {
 public:
  virtual TreeNode FirstChild(TreeNode node) noexcept = 0;
  virtual TreeNode NextSibling(TreeNode node) noexcept = 0;
  virtual TreeNode Parent(TreeNode node) noexcept = 0;  // kNoNode: the root
  virtual bool IsChecked(TreeNode node) noexcept = 0;
  virtual void SetChecked(TreeNode node, bool checked) noexcept = 0;
  virtual bool IsFile(TreeNode node) noexcept = 0;

 protected:
  ~CheckTree() = default;
};

// The next node below `top` in the order node, what is below it, sibling; the first one after `top`
// itself. kNoNode at the end.
TreeNode NextBelow(CheckTree& tree, TreeNode top, TreeNode node) noexcept;

// All descendants; not the node itself.
void SetChecksBelow(CheckTree& tree, TreeNode node, bool checked) noexcept;
void InvertChecksBelow(CheckTree& tree, TreeNode node) noexcept;

// What a tap on the box of `node` changes besides the box itself, which the control toggles
// afterwards.
void CheckBoxTapped(CheckTree& tree, TreeNode node) noexcept;

}  // namespace kelvo
