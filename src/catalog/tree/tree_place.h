// Where the user is in the tree -- what is checked and what is open -- kept over a new build of it.
#pragma once

#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "catalog/media/entry_list.h"
#include "catalog/tree/checks.h"

namespace kelvo {

// What shows the tree: labels, and groups open or closed.
class TreeView {
 public:
  virtual void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept = 0;
  virtual bool IsOpen(TreeNode node) noexcept = 0;
  virtual void Open(TreeNode node) noexcept = 0;

 protected:
  ~TreeView() = default;
};

// Groups are known again by their labels, files by their entries. What there is no memory for is
// forgotten.
class TreePlace {
 public:
  void Remember(const CatalogTree& tree, TreeView& view, const EntryList& entries) noexcept;
  // Into a tree of the same entries in which nothing is checked or open. A group that the file
  // `moved` has come to, unchecked, is not checked any more.
  void Restore(CatalogTree& tree, TreeView& view, const EntryList& entries,
               const MediaEntry& moved) noexcept;

 private:
  struct Group {
    size_t depth;
    bool checked;
    bool open;
    HeapText label;
  };

  void RememberBelow(const CatalogTree& tree, TreeView& view, TreeNode parent,
                     size_t depth) noexcept;
  void RestoreBelow(CatalogTree& tree, TreeView& view, TreeNode parent, size_t depth,
                    size_t first) noexcept;
  size_t Find(size_t depth, size_t first) const noexcept;

  Array<Group> groups_;     // checked or open, or above such a one; from top to bottom
  Array<uint8_t> checked_;  // one flag an entry
  wchar_t label_[kTextCapacity];
};

}  // namespace kelvo
