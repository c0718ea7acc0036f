// List controls with check boxes.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "catalog/lists/current_playlist.h"

namespace kelvo {

int CountItems(HWND list) noexcept;
bool IsItemChecked(HWND list, int at) noexcept;
void SetItemChecked(HWND list, int at, bool checked) noexcept;
void CheckAllItems(HWND list, bool checked) noexcept;
void InvertItemChecks(HWND list) noexcept;
size_t ItemData(HWND list, int at) noexcept;
void SetItemData(HWND list, int at, size_t data) noexcept;
// Whether a WM_NOTIFY of LVN_ITEMCHANGED is about the check box, and about the selection.
bool CheckChanged(const NMLISTVIEW& change) noexcept;
bool SelectionChanged(const NMLISTVIEW& change) noexcept;

// The common style of the catalog's lists.
void StyleList(HWND list) noexcept;

class ListItems final : public SelectableItems {
 public:
  explicit ListItems(HWND list) noexcept : list_(list) {}
  bool IsSelected(size_t at) noexcept override;
  void SetSelected(size_t at, bool selected) noexcept override;
  bool IsFocused(size_t at) noexcept override;
  void SetFocused(size_t at) noexcept override;
  void Remove(size_t at) noexcept override;
  void Swapped(size_t a, size_t b) noexcept override;

 private:
  bool HasState(size_t at, UINT bit) noexcept;
  void SetState(size_t at, UINT bit, bool set) noexcept;
  HWND list_;
};

}  // namespace kelvo
