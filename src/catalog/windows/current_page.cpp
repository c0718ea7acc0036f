#include "catalog/windows/catalog_sheet.h"

#include "base/sync/thread.h"
#include "base/text/wide.h"
#include "catalog/windows/list_view.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "kelvo/messages.h"
#include "playlist/playlist_files.h"
#include "playlist/save_dialog.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

int CALLBACK CompareItems(LPARAM a, LPARAM b, LPARAM parameter) noexcept {
  const CatalogState& state = *reinterpret_cast<const CatalogState*>(parameter);
  return CompareEntries(state.current[static_cast<size_t>(a)],
                        state.current[static_cast<size_t>(b)], state.sort);
}

constexpr struct {
  UINT title;
  int width;  // pixels
} kColumns[kPlaylistColumns] = {
    {IDS_TITLE, 150}, {IDS_COLUMN_ARTIST, 60}, {IDS_COLUMN_ALBUM, 150}, {IDS_COLUMN_GENRE, 80}};

// What is left when all columns and a scroll bar are seen.
int SpareWidth(HWND list) noexcept {
  RECT window = {};
  GetWindowRect(list, &window);
  int spare = window.right - window.left - GetSystemMetrics(SM_CXVSCROLL);
  for (const auto& column : kColumns) spare -= column.width;
  return spare > 0 ? spare : 0;
}

}  // namespace

CurrentPage::CurrentPage(CatalogState& state, CatalogSheetEvents& events) noexcept
    : CatalogPage(state, events, IDC_LIST, IDR_CURRENT_BAR) {}

void CurrentPage::OnPageInit() noexcept {
  StyleList(view());
  InsertColumns();
  spare_ = 0;
  OnPageSize();
  Fill();
}

void CurrentPage::InsertColumns() noexcept {
  for (int i = 0; i < kPlaylistColumns; ++i) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(LoadLocalizedString(OwnModule(), kColumns[i].title));
    column.cx = kColumns[i].width;
    column.iSubItem = i;
    SendMessageW(view(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(&column));
  }
}

// The artist, whose column is the narrowest, gets half of the room, title and album the rest.
void CurrentPage::OnPageSize() noexcept {
  const int spare = SpareWidth(view());
  const int more = spare - spare_;
  if (more == 0) return;
  spare_ = spare;
  const int quarter = more / 4;
  const int shares[] = {quarter, more - 2 * quarter, quarter};
  for (int i = 0; i < 3; ++i) {
    ListView_SetColumnWidth(view(), i, ListView_GetColumnWidth(view(), i) + shares[i]);
  }
}

void CurrentPage::Fill() noexcept {
  if (!is_open()) return;
  {
    const ListPause pause(window(), view());
    ListView_DeleteAllItems(view());
    AppendItems();
    ShowChecks(view(), state().current);
  }
  UpdateButtons();
}

void CurrentPage::AppendItems() noexcept {
  LVITEMW item = {};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.pszText = LPSTR_TEXTCALLBACKW;
  const int count = static_cast<int>(state().current.size());
  for (; item.iItem < count; ++item.iItem) {
    item.lParam = item.iItem;
    if (SendMessageW(view(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) == -1) break;
    for (int column = 1; column < kPlaylistColumns; ++column) {
      ListView_SetItemText(view(), item.iItem, column, LPSTR_TEXTCALLBACKW);
    }
  }
}

ModalDialog::Handled CurrentPage::OnCommand(int id, int) noexcept {
  switch (id) {
    case IDOK:
      CloseSheet();
      return Handled::kYes;
    case ID_PLAY:
      Play();
      return Handled::kYes;
    case ID_ENQUEUE:
      HandOverEntries(state().host, HandOver::kEnqueue, state().current);
      return Handled::kYes;
    case ID_SAVE_PLAYLIST:
      Save();
      return Handled::kYes;
    case ID_REMOVE_SELECTED:
    case ID_MOVE_UP:
    case ID_MOVE_DOWN:
      Edit(id);
      return Handled::kYes;
    default:
      return Select(id) ? Handled::kYes : Handled::kNo;
  }
}

// The buttons follow once all items have changed.
bool CurrentPage::Select(int id) noexcept {
  {
    const ListPause pause(window(), view());
    if (!ChangeItems(id)) return false;
  }
  UpdateButtons();
  return true;
}

bool CurrentPage::ChangeItems(int id) noexcept {
  const size_t count = static_cast<size_t>(CountItems(view()));
  switch (id) {
    case ID_CHECK_ALL:
    case ID_CHECK_NONE:
    case ID_INVERT_CHECKS:
      for (size_t i = 0; i < count; ++i) {
        uintptr_t& flag = state().current[i].item;
        const bool checked = id == ID_INVERT_CHECKS ? flag == 0 : id == ID_CHECK_ALL;
        flag = checked ? kEntryFlag : 0;
      }
      ShowChecks(view(), state().current);
      return true;
    case ID_SELECT_ALL:
    case ID_SELECT_NONE:
      ListView_SetItemState(view(), -1, id == ID_SELECT_ALL ? LVIS_SELECTED : 0, LVIS_SELECTED);
      return true;
    case ID_INVERT_SELECTION: {
      ListSelection selection;
      if (!ReadSelection(view(), &selection)) return true;
      for (bool& selected : selection.selected) selected = !selected;
      ShowEdited(view(), state().current, selection);
      return true;
    }
    default:
      return false;
  }
}

void CurrentPage::Play() noexcept {
  HandOverEntries(state().host, HandOver::kPlay, state().current);
  if (!state().host.is_set()) return;
  PostToWindow(state().parent, kMessageCatalogPlay, 0, 0);
  PostToWindow(state().parent, kMessageCatalogPlayed, 0, 0);
}

void CurrentPage::Save() noexcept {
  SaveDialogState dialog;
  if (!AskWhereToSave(state().files, state().host_module, window(), &dialog)) return;
  WriteM3u(state().files, dialog.path, state().current);
}

// Without memory for an item the list is shorter than the playlist. Then it is filled once more,
// for the next command.
bool CurrentPage::ShowsAll() noexcept {
  if (static_cast<size_t>(CountItems(view())) == state().current.size()) return true;
  Fill();
  return false;
}

void CurrentPage::Edit(int id) noexcept {
  if (!ShowsAll()) return;
  {
    const ListPause pause(window(), view());
    ListSelection selection;
    if (!ReadSelection(view(), &selection)) return;
    size_t moved = state().current.size();
    if (id == ID_REMOVE_SELECTED) {
      RemoveSelected(state().current, selection);
    } else {
      moved = MoveSelected(state().current, selection,
                           id == ID_MOVE_UP ? Direction::kUp : Direction::kDown);
    }
    ShowEdited(view(), state().current, selection);
    if (moved < state().current.size()) {
      ListView_EnsureVisible(view(), static_cast<int>(moved), FALSE);
    }
  }
  UpdateButtons();
}

void CurrentPage::Sort(int column) noexcept {
  const size_t count = state().current.size();
  Array<size_t> order;
  if (column < 0 || column >= kPlaylistColumns || !ShowsAll() || !order.Resize(count)) return;
  state().sort.Tap(column);
  const ListPause pause(window(), view());
  SendMessageW(view(), LVM_SORTITEMS, reinterpret_cast<WPARAM>(&state()),
               reinterpret_cast<LPARAM>(&CompareItems));
  for (size_t i = 0; i < count; ++i) order[i] = ItemData(view(), static_cast<int>(i));
  Reorder(state().current, order);
  for (size_t i = 0; i < count; ++i) SetItemData(view(), static_cast<int>(i), i);
}

LRESULT CurrentPage::OnNotify(const NMHDR& header, LPARAM lparam) noexcept {
  if (header.hwndFrom != view()) return 0;
  ToggleChosen(header, lparam);
  switch (header.code) {
    case static_cast<UINT>(LVN_GETDISPINFOW): {
      LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lparam)->item;
      const size_t at = static_cast<size_t>(item.lParam);
      if ((item.mask & LVIF_TEXT) == 0 || at >= state().current.size()) return 0;
      ColumnText(state().current[at], static_cast<PlaylistColumn>(item.iSubItem), label_);
      item.pszText = label_;
      return 0;
    }
    case static_cast<UINT>(LVN_COLUMNCLICK):
      Sort(reinterpret_cast<const NMLISTVIEW*>(lparam)->iSubItem);
      return 0;
    case static_cast<UINT>(LVN_ITEMCHANGED): {
      const NMLISTVIEW& change = *reinterpret_cast<const NMLISTVIEW*>(lparam);
      if (CheckChanged(change)) {
        const size_t at = ItemData(view(), change.iItem);
        if (at < state().current.size()) {
          state().current[at].item = IsItemChecked(view(), change.iItem) ? kEntryFlag : 0;
        }
        UpdateButtons();
      } else if (SelectionChanged(change)) {
        UpdateButtons();
      }
      return 0;
    }
    default:
      return 0;
  }
}

void CurrentPage::UpdateButtons() noexcept {
  const bool selected = ListView_GetSelectedCount(view()) > 0;
  const bool checked = AnyChecked(state().current);
  EnableButton(ID_REMOVE_SELECTED, selected);
  EnableButton(ID_MOVE_UP, selected);
  EnableButton(ID_MOVE_DOWN, selected);
  EnableButton(ID_PLAY, checked);
  EnableButton(ID_ENQUEUE, checked);
  EnableButton(ID_SAVE_PLAYLIST, checked);
}

}  // namespace kelvo
