// List controls with check boxes.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "catalog/lists/current_playlist.h"
#include "catalog/windows/catalog_page.h"

namespace kelvo {

int CountItems(HWND list) noexcept;
bool IsItemChecked(HWND list, int at) noexcept;
void SetItemChecked(HWND list, int at, bool checked) noexcept;
void CheckAllItems(HWND list, bool checked) noexcept;
void InvertItemChecks(HWND list) noexcept;
// One item an entry, checked when the entry's flag is set.
void ShowChecks(HWND list, const EntryList& entries) noexcept;
size_t ItemData(HWND list, int at) noexcept;
void SetItemData(HWND list, int at, size_t data) noexcept;
// Whether a WM_NOTIFY of LVN_ITEMCHANGED is about the check box, and about the selection.
bool CheckChanged(const NMLISTVIEW& change) noexcept;
bool SelectionChanged(const NMLISTVIEW& change) noexcept;

// Enter, and a double tap beside its box, change an item's check.
void ToggleChosen(const NMHDR& header, LPARAM lparam) noexcept;

// The common style and keys of the catalog's lists.
void StyleList(HWND list) noexcept;

// While this lives, a page's list draws nothing, and the page hears nothing of it: for thousands of
// items the notifications take longer than what they tell of. One at a time.
class ListPause {
 public:
  ListPause(HWND page, HWND list) noexcept;
  ~ListPause();
  ListPause(const ListPause&) = delete;
  ListPause& operator=(const ListPause&) = delete;

 private:
  static LRESULT CALLBACK WithoutNotifications(HWND page, UINT message, WPARAM wparam,
                                               LPARAM lparam) noexcept;
  inline static WNDPROC procedure_ = nullptr;  // the page's own
  HWND page_;
  RedrawPause redraw_;
};

// False when memory is out.
[[nodiscard]] bool ReadSelection(HWND list, ListSelection* selection) noexcept;
// After entries were removed or have changed their places: so many items, their checks, and what is
// selected. Texts come on demand, and an item's data is its position.
void ShowEdited(HWND list, const EntryList& entries, const ListSelection& selection) noexcept;

}  // namespace kelvo
