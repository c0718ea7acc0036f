#pragma once

#include <windows.h>

#include <commctrl.h>

#include "base/windows/resources.h"
#include "catalog/media/entry_list.h"
#include "catalog/tree/catalog_tree.h"
#include "catalog/tree/tree_place.h"

namespace kelvo {

// The tree control of the Media Catalog and the tree that it shows. A folder's item data is its own
// handle, that of all other nodes 0.
//
// What is checked is decided in the tree. The control gets to know it of an item when that is
// looked at, on the screen or by a message: some systems' control searches all its items for each
// one that is changed. Only the box that the user tapped last is the control's, which toggles it by
// itself.
class MediaTree final : public TreeView {
 public:
  void Attach(HWND view) noexcept;  // gives the control its images
  void Detach() noexcept;           // before the control goes

  // With the last tap taken into account.
  CatalogTree& nodes() noexcept;
  void Clear() noexcept;
  // Shows a tree that has been built. What cannot be shown is removed from it, and its entries have
  // no node then.
  void Show(EntryList& entries) noexcept;
  // Shows the checks in sight, after a change.
  void ShowChecks() noexcept;
  // The control is about to toggle the box, or has.
  void BoxTapped(TreeNode node) noexcept;

  void Remove(TreeNode node) noexcept;
  void Toggle(TreeNode node) noexcept;  // opens or closes it
  TreeNode Selected() noexcept;
  void Select(TreeNode node) noexcept;  // shows it as well
  // The node at a point of the screen, and on which part of it.
  TreeNode HitTest(POINT at, bool* on_box, bool* on_item) noexcept;

  void CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept override;
  bool IsOpen(TreeNode node) noexcept override;
  void Open(TreeNode node) noexcept override;

 private:
  HTREEITEM Item(TreeNode node) const noexcept {
    return node == kNoNode ? TVI_ROOT : items_[node - 1];
  }
  TreeNode NodeOf(HTREEITEM item) const noexcept;
  static LRESULT CALLBACK Procedure(HWND view, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
  // To the control itself.
  LRESULT Send(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return CallWindowProcW(procedure_, view_, message, wparam, lparam);
  }
  UINT State(TreeNode node, UINT mask) noexcept;
  void Insert(TreeNode node, HTREEITEM before) noexcept;
  void InsertFiles(TreeNode parent) noexcept;
  void ShowCheck(TreeNode node) noexcept;
  void TakeCheck(TreeNode node) noexcept;  // as the control has it

  HWND view_ = nullptr;
  WNDPROC procedure_ = nullptr;  // the control's own
  CatalogTree nodes_;
  Array<HTREEITEM> items_;     // by node
  Array<uint32_t> slots_;      // nodes by the hash of their items; at least half are empty
  TreeNode tapped_ = kNoNode;  // whose check is the control's
  UniqueIconList images_;
};

}  // namespace kelvo
