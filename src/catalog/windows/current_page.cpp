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

}  // namespace

CurrentPage::CurrentPage(CatalogState& state, CatalogSheetEvents& events) noexcept
    : CatalogPage(state, events, IDC_LIST, IDR_CURRENT_BAR) {}

void CurrentPage::OnPageInit() noexcept {
  StyleList(view());
  InsertColumns();
  Fill();
}

void CurrentPage::InsertColumns() noexcept {
  static constexpr struct {
    UINT title;
    int width;
  } kColumns[kPlaylistColumns] = {
      {IDS_TITLE, 150}, {IDS_COLUMN_ARTIST, 60}, {IDS_COLUMN_ALBUM, 150}, {IDS_COLUMN_GENRE, 80}};
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

void CurrentPage::Fill() noexcept {
  if (!is_open()) return;
  const RedrawPause pause(view());
  changing_ = true;
  ListView_DeleteAllItems(view());
  for (size_t i = 0; i < state().current.size(); ++i) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = static_cast<int>(i);
    item.pszText = LPSTR_TEXTCALLBACKW;
    item.lParam = static_cast<LPARAM>(i);
    const LRESULT at = SendMessageW(view(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    if (at == -1) break;
    for (int column = 1; column < kPlaylistColumns; ++column) {
      ListView_SetItemText(view(), static_cast<int>(at), column, LPSTR_TEXTCALLBACKW);
    }
    SetItemChecked(view(), static_cast<int>(at), state().current[i].item != 0);
  }
  changing_ = false;
  UpdateButtons();
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
  const RedrawPause pause(view());
  changing_all_ = true;
  const bool selected = ChangeItems(id);
  changing_all_ = false;
  if (selected) UpdateButtons();
  return selected;
}

bool CurrentPage::ChangeItems(int id) noexcept {
  const int count = CountItems(view());
  ListItems items(view());
  switch (id) {
    case ID_CHECK_ALL:
    case ID_CHECK_NONE:
      CheckAllItems(view(), id == ID_CHECK_ALL);
      return true;
    case ID_INVERT_CHECKS:
      InvertItemChecks(view());
      return true;
    case ID_SELECT_ALL:
    case ID_SELECT_NONE:
    case ID_INVERT_SELECTION:
      for (int i = 0; i < count; ++i) {
        const size_t at = static_cast<size_t>(i);
        items.SetSelected(at,
                          id == ID_INVERT_SELECTION ? !items.IsSelected(at) : id == ID_SELECT_ALL);
      }
      return true;
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

void CurrentPage::Edit(int id) noexcept {
  // Without memory for an item the list is shorter than the playlist.
  if (static_cast<size_t>(CountItems(view())) != state().current.size()) return;
  ListItems items(view());
  changing_ = true;
  if (id == ID_REMOVE_SELECTED) {
    RemoveSelected(state().current, items);
  } else {
    MoveSelected(state().current, items, id == ID_MOVE_UP ? Direction::kUp : Direction::kDown);
  }
  Renumber();
  changing_ = false;
  UpdateButtons();
}

void CurrentPage::Renumber() noexcept {
  for (int i = 0, count = CountItems(view()); i < count; ++i) {
    SetItemData(view(), i, static_cast<size_t>(i));
  }
}

void CurrentPage::Sort(int column) noexcept {
  const size_t count = state().current.size();
  Array<size_t> order;
  if (column < 0 || column >= kPlaylistColumns ||
      static_cast<size_t>(CountItems(view())) != count || !order.Resize(count)) {
    return;
  }
  state().sort.Tap(column);
  changing_ = true;
  SendMessageW(view(), LVM_SORTITEMS, reinterpret_cast<WPARAM>(&state()),
               reinterpret_cast<LPARAM>(&CompareItems));
  for (size_t i = 0; i < count; ++i) order[i] = ItemData(view(), static_cast<int>(i));
  Reorder(state().current, order);
  Renumber();
  changing_ = false;
}

LRESULT CurrentPage::OnNotify(const NMHDR& header, LPARAM lparam) noexcept {
  if (header.hwndFrom != view()) return 0;
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
      if (changing_) return 0;
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
  if (changing_all_) return;
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
