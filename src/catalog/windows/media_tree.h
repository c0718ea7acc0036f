#pragma once

#include <windows.h>

#include <commctrl.h>

#include "base/windows/resources.h"
#include "catalog/tree/catalog_tree.h"
#include "catalog/tree/tree_place.h"

namespace kelvo {

// The tree control of the Media Catalog. A folder's item data is its own handle, that of all other
// nodes 0.
class MediaTree final : public TreeSink, public PlaceTree {
 public:
  void Attach(HWND tree) noexcept;  // gives the control its images
  void Detach() noexcept;           // before the control goes

  void Clear() noexcept;
  void Remove(TreeNode node) noexcept;
  void Toggle(TreeNode node) noexcept;  // opens or closes it
  void SetAllChecks(bool checked) noexcept;
  TreeNode Selected() noexcept;
  void Select(TreeNode node) noexcept;  // shows it as well
  // The node at a point of the screen, and on which part of it.
  TreeNode HitTest(POINT at, bool* on_box, bool* on_item) noexcept;

  TreeNode Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept override;
  void SortLabels(TreeNode parent) noexcept override;
  void SortFolders(TreeNode parent, const FolderOrder& order) noexcept override;
  TreeNode FirstChild(TreeNode node) noexcept override;
  TreeNode NextSibling(TreeNode node) noexcept override;
  TreeNode Parent(TreeNode node) noexcept override;
  bool IsChecked(TreeNode node) noexcept override;
  void SetChecked(TreeNode node, bool checked) noexcept override;
  bool IsFile(TreeNode node) noexcept override;
  void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept override;
  bool IsOpen(TreeNode node) noexcept override;
  void Open(TreeNode node) noexcept override;

 private:
  TreeNode Next(TreeNode node, UINT relation) noexcept;
  bool GetImageAndState(TreeNode node, TVITEMW* item) noexcept;

  HWND tree_ = nullptr;
  // All of them, in no order: asking the control for each next one takes longer than its check.
  Array<TreeNode> nodes_;
  bool knows_nodes_ = true;  // there was memory for them
  TreeNode file_ = kNoNode;  // the last one that was seen to be a file
  UniqueIconList images_;
};

}  // namespace kelvo
