#pragma once

#include <stdint.h>

namespace kelvo {

// A node of the catalog's tree, the control's item handle; 0 is none, and as a parent the root.
using TreeNode = uintptr_t;
inline constexpr TreeNode kNoNode = 0;

// The numbers are the positions in the tree's image list.
enum class NodeKind : int32_t { kGenre = 0, kAlbum = 1, kArtist = 2, kFile = 3, kFolder = 4 };

// Receives the tree while it is built: the tree control, or a text in tests.
class TreeSink {
 public:
  // Inserts a node among its sorted siblings; the label is copied. kNoNode on failure.
  virtual TreeNode Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept = 0;
  // Sorts the folders among the children of `parent`; the other children keep their order.
  virtual void SortFolders(TreeNode parent) noexcept = 0;

 protected:
  ~TreeSink() = default;
};

}  // namespace kelvo
