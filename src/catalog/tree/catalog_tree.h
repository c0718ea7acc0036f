// The tree of the Media Catalog: groups or folders, in them files, each with a check box. The
// control on the page shows it; what is decided about nodes and checks is decided here, without the
// control, which is slow to ask where there are many.
#pragma once

#include <stdint.h>

#include "base/memory/array.h"
#include "base/text/wide.h"

namespace kelvo {

// The number of a node, counted from 1 in the order in which they were added. 0 is none, and as a
// parent the root, which has no check box.
using TreeNode = uintptr_t;
inline constexpr TreeNode kNoNode = 0;

// The numbers are the positions in the tree's image list.
enum class NodeKind : uint8_t { kGenre, kAlbum, kArtist, kFile, kFolder };

class CatalogTree {
 public:
  // The number of the last node; some may have been removed.
  TreeNode last() const noexcept { return nodes_.size(); }
  bool Has(TreeNode node) const noexcept {
    return node != kNoNode && node <= last() && At(node).is_there;
  }
  TreeNode FirstChild(TreeNode node) const noexcept { return At(node).first; }
  TreeNode NextSibling(TreeNode node) const noexcept { return At(node).next; }
  TreeNode Parent(TreeNode node) const noexcept { return At(node).parent; }
  NodeKind Kind(TreeNode node) const noexcept { return At(node).kind; }
  bool IsFile(TreeNode node) const noexcept { return Has(node) && Kind(node) == NodeKind::kFile; }
  bool IsChecked(TreeNode node) const noexcept { return At(node).checked; }

  void Clear() noexcept;
  // Behind its siblings; the label is copied. kNoNode when memory is out.
  TreeNode Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept;
  // Until ReleaseLabels(), before which all sorting is done.
  const wchar_t* Label(TreeNode node) const noexcept { return text_.data() + At(node).label; }
  void ReleaseLabels() noexcept { text_.Clear(); }
  // Sorts the children of `parent` as the system's controls sort labels; what is equal keeps its
  // order.
  void SortLabels(TreeNode parent) noexcept;
  // Sorts the folders among them by their characters. A file is equal to everything.
  void SortFolders(TreeNode parent) noexcept;
  // With all that is below it.
  void Remove(TreeNode node) noexcept;

  void SetChecked(TreeNode node, bool checked) noexcept { At(node).checked = checked; }
  // Whether what shows the tree has not been told of the node's check.
  bool IsToShow(TreeNode node) const noexcept { return At(node).checked != At(node).shown; }
  void SetShown(TreeNode node, bool checked) noexcept { At(node).shown = checked; }

 private:
  struct Node {
    uint32_t parent = 0;
    uint32_t first = 0;  // of its children
    uint32_t last = 0;   // of them, until they are sorted
    uint32_t next = 0;   // sibling
    uint32_t label = 0;  // its position in the text
    NodeKind kind = NodeKind::kFolder;
    bool is_there = true;
    bool checked = false;
    bool shown = false;  // as checked
  };

  Node& At(TreeNode node) noexcept { return node == kNoNode ? root_ : nodes_[node - 1]; }
  const Node& At(TreeNode node) const noexcept {
    return node == kNoNode ? root_ : nodes_[node - 1];
  }
  template <class Compare>
  void SortChildren(TreeNode parent, const Compare& compare) noexcept;
  template <class Compare>
  uint32_t Sorted(uint32_t first, size_t count, const Compare& compare) noexcept;

  Node root_;
  Array<Node> nodes_;
  Array<wchar_t> text_;  // the labels, each with its NUL
};

// All that is below `top`, in the order node, what is below it, next sibling.
class WalkBelow {
 public:
  WalkBelow(const CatalogTree& tree, TreeNode top) noexcept : tree_(tree), top_(top), node_(top) {}

  // kNoNode at the end.
  TreeNode Next() noexcept {
    TreeNode next = tree_.FirstChild(node_);
    while (next == kNoNode && node_ != top_) {
      next = tree_.NextSibling(node_);
      if (next == kNoNode) node_ = tree_.Parent(node_);
    }
    return node_ = next;
  }

 private:
  const CatalogTree& tree_;
  TreeNode top_;
  TreeNode node_;
};

}  // namespace kelvo
