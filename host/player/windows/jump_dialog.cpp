#include "host/player/windows/choices.h"

#include <commctrl.h>

#include <algorithm>

#include "host/player/list_order.h"
#include "host/player/play_order.h"
#include "host/res/dialog_ids.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr UINT_PTR kSearchKeys = 1;

// The keys that go through the list do so from the field as well.
LRESULT CALLBACK OnSearchKey(HWND field, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                             DWORD_PTR list) {
  const bool of_list =
      wparam == VK_UP || wparam == VK_DOWN || wparam == VK_PRIOR || wparam == VK_NEXT;
  if (message == WM_KEYDOWN && of_list) {
    return SendMessageW(reinterpret_cast<HWND>(list), message, wparam, lparam);
  }
  if (message == WM_NCDESTROY) RemoveWindowSubclass(field, OnSearchKey, kSearchKeys);
  return DefSubclassProc(field, message, wparam, lparam);
}

class JumpDialog {
 public:
  JumpDialog(const std::vector<Track>& tracks, size_t current) : tracks_(tracks), chosen_(current) {
    for (const Track& track : tracks) {
      const std::wstring name = track.path.substr(track.path.find_last_of(L'\\') + 1);
      texts_.push_back(Folded(track.title + L'\n' + name));
    }
  }

  size_t Run(HWND parent) {
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    const INT_PTR answer = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(DIALOG_JUMP),
                                           parent, Procedure, reinterpret_cast<LPARAM>(this));
    return answer == IDOK ? chosen_ : kNoTrack;
  }

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrW(dialog, DWLP_USER, lparam);
      reinterpret_cast<JumpDialog*>(lparam)->Begin(dialog);
      return FALSE;  // the field has the keyboard
    }
    auto* self = reinterpret_cast<JumpDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!self) return FALSE;
    if (message == WM_COMMAND) return self->OnCommand(LOWORD(wparam), HIWORD(wparam));
    return message == WM_NOTIFY && self->OnNotify(reinterpret_cast<NMHDR*>(lparam));
  }

  void Begin(HWND dialog) {
    dialog_ = dialog;
    PlaceOver(dialog, GetWindow(dialog, GW_OWNER));
    list_ = GetDlgItem(dialog, CONTROL_FOUND);
    SetWindowTextW(dialog, Text(TEXT_CAPTION_JUMP).c_str());
    SetDlgItemTextW(dialog, CONTROL_SEARCH_LABEL, Text(TEXT_SEARCH).c_str());
    SetDlgItemTextW(dialog, IDOK, Text(TEXT_JUMP_PLAY).c_str());
    SetDlgItemTextW(dialog, IDCANCEL, Text(TEXT_CLOSE).c_str());
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    RECT room;
    GetClientRect(list_, &room);
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = static_cast<int>(room.right) - GetSystemMetrics(SM_CXVSCROLL);
    ListView_InsertColumn(list_, 0, &column);
    const HWND field = GetDlgItem(dialog, CONTROL_SEARCH);
    SetWindowSubclass(field, OnSearchKey, kSearchKeys, reinterpret_cast<DWORD_PTR>(list_));
    SetFocus(field);
    Search();
  }

  void Search() {
    wchar_t words[256] = L"";
    GetDlgItemTextW(dialog_, CONTROL_SEARCH, words, 256);
    found_ = FindWords(texts_, Folded(words));
    ListView_SetItemCountEx(list_, static_cast<int>(found_.size()), 0);
    const auto before = std::find(found_.begin(), found_.end(), chosen_);
    Select(before == found_.end() ? 0 : static_cast<int>(before - found_.begin()));
    EnableWindow(GetDlgItem(dialog_, IDOK), !found_.empty());
  }

  void Select(int row) {
    ListView_SetItemState(list_, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list_, row, FALSE);
  }

  bool OnCommand(int control, int notification) {
    if (control == CONTROL_SEARCH && notification == EN_CHANGE) {
      Search();
      return true;
    }
    if (control == IDOK) Play();
    if (control == IDCANCEL) EndDialog(dialog_, IDCANCEL);
    return control == IDOK || control == IDCANCEL;
  }

  void Play() {
    const int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
    if (row < 0 || static_cast<size_t>(row) >= found_.size()) return;
    chosen_ = found_[static_cast<size_t>(row)];
    EndDialog(dialog_, IDOK);
  }

  bool OnNotify(NMHDR* header) {
    if (header->idFrom != CONTROL_FOUND) return false;
    if (header->code == NM_DBLCLK) Play();
    if (header->code != LVN_GETDISPINFOW) return false;
    LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
    const auto row = static_cast<size_t>(item.iItem);
    if (!(item.mask & LVIF_TEXT) || row >= found_.size()) return false;
    const size_t index = found_[row];
    shown_ = std::to_wstring(index + 1) + L". " + tracks_[index].title;
    item.pszText = shown_.data();
    return true;
  }

  const std::vector<Track>& tracks_;
  Texts texts_;                // folded: what is searched
  std::vector<size_t> found_;  // the tracks in the list
  size_t chosen_;
  std::wstring shown_;  // the row asked for last
  HWND dialog_ = nullptr;
  HWND list_ = nullptr;
};

}  // namespace

size_t AskForTrack(HWND parent, const std::vector<Track>& tracks, size_t current) {
  return JumpDialog(tracks, current).Run(parent);
}

}  // namespace velmora
