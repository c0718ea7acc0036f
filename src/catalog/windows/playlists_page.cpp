#include "catalog/windows/catalog_sheet.h"

#include "base/text/wide.h"
#include "base/windows/pocketpc.h"
#include "catalog/lists/device_lists.h"
#include "catalog/media/entry_list.h"
#include "catalog/windows/catalog_dialogs.h"
#include "catalog/windows/list_view.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "entry/language/text_entry_dialog.h"
#include "playlist/playlist_files.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr UINT_PTR kFirstScanTimer = 1;
constexpr UINT kFirstScanDelayMs = 500;  // the sheet is to be seen before

bool IsPlaylist(const wchar_t* path) noexcept {
  const MediaKind kind = MediaKindOf(path);
  return kind == MediaKind::kM3u || kind == MediaKind::kPls || kind == MediaKind::kAsx;
}

// The control wants texts that are not const; it only reads them.
wchar_t* Text(const wchar_t* text) noexcept {
  return const_cast<wchar_t*>(text);
}

}  // namespace

PlaylistsPage::PlaylistsPage(CatalogState& state, CatalogSheetEvents& events) noexcept
    : CatalogPage(state, events, IDC_LIST, IDR_PLAYLISTS_BAR) {}

void PlaylistsPage::OnPageInit() noexcept {
  StyleList(view());
  SetWindowLongW(view(), GWL_STYLE, GetWindowLongW(view(), GWL_STYLE) | LVS_SORTASCENDING);
  LVCOLUMNW column = {};
  SendMessageW(view(), LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  if (state().first_showing) {
    state().first_showing = false;
    SetTimer(window(), kFirstScanTimer, kFirstScanDelayMs, nullptr);
    FitColumn();
  } else {
    Fill();
  }
}

bool PlaylistsPage::OnPageMessage(UINT message, WPARAM wparam) noexcept {
  if (message != WM_TIMER || wparam != kFirstScanTimer) return false;
  KillTimer(window(), kFirstScanTimer);
  PostMessageW(window(), WM_COMMAND, ID_RESCAN, 0);
  return true;
}

void PlaylistsPage::Fill() noexcept {
  if (!is_open()) return;
  const RedrawPause pause(view());
  ListView_DeleteAllItems(view());
  for (size_t i = 0; i < state().playlists.size(); ++i) {
    wchar_t text[kTextCapacity];
    CopyWide(text, kTextCapacity, state().playlists[i]);
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = static_cast<int>(i);
    item.pszText = text;
    item.lParam = static_cast<LPARAM>(i);
    if (SendMessageW(view(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) == -1) break;
  }
  FitColumn();
}

// As wide as the longest path, whose end is the file's name, and at least as the list.
void PlaylistsPage::FitColumn() noexcept {
  RECT client = {};
  GetClientRect(view(), &client);
  ListView_SetColumnWidth(view(), 0, LVSCW_AUTOSIZE);
  if (ListView_GetColumnWidth(view(), 0) >= client.right) return;
  ListView_SetColumnWidth(view(), 0, client.right);
}

ModalDialog::Handled PlaylistsPage::OnCommand(int id, int) noexcept {
  // The items stand for what was found before.
  if (state().scanning && id != IDOK) return Handled::kYes;
  switch (id) {
    case IDOK:
      CloseSheet();
      break;
    case ID_RESCAN:
      events().Rescan(window());
      break;
    case ID_RENAME:
      Rename();
      break;
    case ID_DELETE_FILE:
      Delete();
      break;
    case ID_CHECK_ALL:
    case ID_CHECK_NONE:
    case ID_INVERT_CHECKS:
      ChangeChecks(id);
      break;
    case ID_ADD_CHECKED:
      AddCheckedLists();
      break;
    default:
      return Handled::kNo;
  }
  return Handled::kYes;
}

void PlaylistsPage::ChangeChecks(int id) noexcept {
  const ListPause pause(window(), view());
  if (id == ID_INVERT_CHECKS) {
    InvertItemChecks(view());
  } else {
    CheckAllItems(view(), id == ID_CHECK_ALL);
  }
}

int PlaylistsPage::SelectedItem() noexcept {
  const int selected = ListView_GetNextItem(view(), -1, LVNI_SELECTED);
  return selected >= 0 ? selected : ListView_GetSelectionMark(view());
}

void PlaylistsPage::Rename() noexcept {
  const int item = SelectedItem();
  if (item < 0 || item >= CountItems(view())) return;
  const size_t index = ItemData(view(), item);
  const wchar_t* path = state().playlists[index];
  TextEntryDialog entry;
  entry.SetText(FileNameOf(path));
  // A name without its extension would be that of no playlist.
  if (!entry.Run(window(), TextEntryDialog::Replaced::kBeforeExtension)) return;
  HeapText renamed = RenamedPath(path, entry.GetText());
  if (!renamed.has_value()) return;
  // The list shows the new name even when the file could not be moved.
  state().files.Move(path, renamed.get());
  wchar_t text[kTextCapacity];
  CopyWide(text, kTextCapacity, renamed.get());
  state().playlists.Replace(index, std::move(renamed));
  ListView_SetItemText(view(), item, 0, Text(text));
  FitColumn();
  ListView_RedrawItems(view(), item, item);
}

void PlaylistsPage::Delete() noexcept {
  const int item = ListView_GetNextItem(view(), -1, LVNI_SELECTED);
  if (item < 0) return;
  const size_t index = ItemData(view(), item);
  const wchar_t* path = state().playlists[index];
  if (!AskDelete(window(), path) || !state().files.Delete(path)) return;
  ListView_DeleteItem(view(), item);
  state().playlists.RemoveAt(index);
  for (int i = 0, count = CountItems(view()); i < count; ++i) {
    const size_t data = ItemData(view(), i);
    if (data > index) SetItemData(view(), i, data - 1);
  }
}

void PlaylistsPage::AddCheckedLists() noexcept {
  const WaitCursor wait;
  ChainGuard guard;
  const PlaylistSources sources = {state().files, state().information, &guard};
  for (int i = 0, count = CountItems(view()); i < count; ++i) {
    if (!IsItemChecked(view(), i)) continue;
    // A renamed one may look like a song by now.
    const wchar_t* path = state().playlists[ItemData(view(), i)];
    if (IsPlaylist(path)) AddPath(sources, path, &state().current);
  }
  events().CurrentPlaylistChanged();
}

LRESULT PlaylistsPage::OnNotify(const NMHDR& header, LPARAM lparam) noexcept {
  if (header.hwndFrom != view()) return 0;
  ToggleChosen(header, lparam);
  if (header.code != GN_CONTEXTMENU) return 0;
  const int focused = ListView_GetNextItem(view(), -1, LVNI_FOCUSED);
  if (focused < 0 || ListView_GetItemState(view(), focused, LVIS_SELECTED) == 0) return 0;
  ShowPopup(reinterpret_cast<const NMRGINFO*>(lparam)->ptAction);
  return 1;
}

void PlaylistsPage::ShowPopup(POINT at) noexcept {
  const HMENU menu = CreatePopupMenu();
  if (!menu) return;
  AppendMenuW(menu, MF_STRING, ID_RENAME, LoadLocalizedString(OwnModule(), IDS_RENAME_FILE));
  AppendMenuW(menu, MF_STRING, ID_DELETE_FILE, LoadLocalizedString(OwnModule(), IDS_DELETE_ITEM));
  TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_TOPALIGN, at.x, at.y, window(), nullptr);
  DestroyMenu(menu);
}

}  // namespace kelvo
