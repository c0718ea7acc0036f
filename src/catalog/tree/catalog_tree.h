// The tree of the Media Catalog as what builds and checks it sees it: the tree control, or a plain
// tree in tests.
#pragma once

#include <stdint.h>

namespace kelvo {

// A node of the catalog's tree, the control's item handle; 0 is none, and as a parent the root.
using TreeNode = uintptr_t;
inline constexpr TreeNode kNoNode = 0;

// The numbers are the positions in the tree's image list.
enum class NodeKind : int32_t { kGenre, kAlbum, kArtist, kFile, kFolder };

// How the folders of one parent are ordered.
class FolderOrder {
 public:
  // Negative, 0, positive. Both are folders.
  virtual int Compare(TreeNode a, TreeNode b) const noexcept = 0;

 protected:
  ~FolderOrder() = default;
};

// Receives the tree while it is built: first every node, groups before files, then the order of the
// children of each parent. (Insertion in sorted place would walk over the siblings each time.)
class TreeSink {
 public:
  // Inserts a node behind its siblings; the label is copied. kNoNode on failure.
  virtual TreeNode Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept = 0;
  // Sorts the children of `parent` by their labels; what is equal keeps its order.
  virtual void SortLabels(TreeNode parent) noexcept = 0;
  // Sorts the folders among the children of `parent`; the other children keep their order.
  virtual void SortFolders(TreeNode parent, const FolderOrder& order) noexcept = 0;

 protected:
  ~TreeSink() = default;
};

// The tree with its checks. kNoNode as a node means the root, which has no check box.
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

}  // namespace kelvo
