#include "catalog/windows/list_view.h"

#include "base/windows/enter_key.h"

namespace kelvo {

int CountItems(HWND list) noexcept {
  return ListView_GetItemCount(list);
}

bool IsItemChecked(HWND list, int at) noexcept {
  return ListView_GetItemState(list, at, LVIS_STATEIMAGEMASK) ==
         static_cast<UINT>(INDEXTOSTATEIMAGEMASK(kCheckedImage));
}

void SetItemChecked(HWND list, int at, bool checked) noexcept {
  const UINT image = checked ? kCheckedImage : kUncheckedImage;
  ListView_SetItemState(list, at, INDEXTOSTATEIMAGEMASK(image), LVIS_STATEIMAGEMASK);
}

void CheckAllItems(HWND list, bool checked) noexcept {
  SetItemChecked(list, -1, checked);  // the position that stands for all
}

void InvertItemChecks(HWND list) noexcept {
  for (int i = 0, count = CountItems(list); i < count; ++i) {
    SetItemChecked(list, i, !IsItemChecked(list, i));
  }
}

void ShowChecks(HWND list, const EntryList& entries) noexcept {
  size_t checked = 0;
  for (const MediaEntry& entry : entries) checked += entry.item != 0;
  const bool most_are = 2 * checked > entries.size();
  CheckAllItems(list, most_are);
  for (size_t i = 0; i < entries.size(); ++i) {
    if ((entries[i].item != 0) != most_are) SetItemChecked(list, static_cast<int>(i), !most_are);
  }
}

size_t ItemData(HWND list, int at) noexcept {
  LVITEMW item = {};
  item.mask = LVIF_PARAM;
  item.iItem = at;
  SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return static_cast<size_t>(item.lParam);
}

void SetItemData(HWND list, int at, size_t data) noexcept {
  LVITEMW item = {};
  item.mask = LVIF_PARAM;
  item.iItem = at;
  item.lParam = static_cast<LPARAM>(data);
  SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

bool CheckChanged(const NMLISTVIEW& change) noexcept {
  return change.iItem >= 0 && (change.uChanged & LVIF_STATE) != 0 &&
         ((change.uOldState ^ change.uNewState) & LVIS_STATEIMAGEMASK) != 0;
}

bool SelectionChanged(const NMLISTVIEW& change) noexcept {
  return (change.uChanged & LVIF_STATE) != 0 &&
         ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0;
}

namespace {

// The item of Enter or of a double tap beside its box, else -1.
int ChosenItem(const NMHDR& header, LPARAM lparam) noexcept {
  const HWND list = header.hwndFrom;
  if (header.code == static_cast<UINT>(LVN_KEYDOWN)) {
    const bool is_enter = reinterpret_cast<const NMLVKEYDOWN*>(lparam)->wVKey == VK_RETURN;
    return is_enter ? ListView_GetNextItem(list, -1, LVNI_FOCUSED) : -1;
  }
  if (header.code != static_cast<UINT>(NM_DBLCLK)) return -1;
  LVHITTESTINFO hit = {};
  hit.pt = LastMessagePoint();
  ScreenToClient(list, &hit.pt);
  const int item = ListView_HitTest(list, &hit);
  return (hit.flags & (LVHT_ONITEMICON | LVHT_ONITEMLABEL)) != 0 ? item : -1;
}

}  // namespace

void ToggleChosen(const NMHDR& header, LPARAM lparam) noexcept {
  const int item = ChosenItem(header, lparam);
  if (item >= 0) SetItemChecked(header.hwndFrom, item, !IsItemChecked(header.hwndFrom, item));
}

void StyleList(HWND list) noexcept {
  const LPARAM styles = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE;
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, styles);
  LeaveEnterTo(list);
}

ListPause::ListPause(HWND page, HWND list) noexcept : page_(page), redraw_(list) {
  procedure_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(page, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WithoutNotifications)));
}

ListPause::~ListPause() {
  SetWindowLongPtrW(page_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure_));
}

LRESULT CALLBACK ListPause::WithoutNotifications(HWND page, UINT message, WPARAM wparam,
                                                 LPARAM lparam) noexcept {
  return message == WM_NOTIFY ? 0 : CallWindowProcW(procedure_, page, message, wparam, lparam);
}

bool ReadSelection(HWND list, ListSelection* selection) noexcept {
  if (!selection->selected.Resize(static_cast<size_t>(CountItems(list)))) return false;
  for (int at = -1; (at = ListView_GetNextItem(list, at, LVNI_SELECTED)) >= 0;) {
    selection->selected[static_cast<size_t>(at)] = true;
  }
  const int focused = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
  selection->focused = focused >= 0 ? static_cast<size_t>(focused) : selection->selected.size();
  return true;
}

void ShowEdited(HWND list, const EntryList& entries, const ListSelection& selection) noexcept {
  const size_t count = selection.selected.size();
  ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
  if (count == 0) ListView_DeleteAllItems(list);
  for (int i = CountItems(list); i-- > static_cast<int>(count);) ListView_DeleteItem(list, i);
  ShowChecks(list, entries);
  for (size_t i = 0; i < count; ++i) {
    if (!selection.selected[i]) continue;
    ListView_SetItemState(list, static_cast<int>(i), LVIS_SELECTED, LVIS_SELECTED);
  }
  if (selection.focused >= count) return;
  ListView_SetItemState(list, static_cast<int>(selection.focused), LVIS_FOCUSED, LVIS_FOCUSED);
}

}  // namespace kelvo
