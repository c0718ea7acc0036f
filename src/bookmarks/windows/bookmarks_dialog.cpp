#include "bookmarks/windows/bookmarks_dialog.h"

#include "base/messages/post_message.h"
#include "base/windows/feature_dialog.h"
#include "bookmarks/windows/edit_bookmark_dialog.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "kelvo/messages.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr int kImagePresent = 0;
constexpr int kImageMissing = 1;

struct Column {
  BookmarkColumn column;
  UINT heading;  // string id; 0 for none
  int width;     // pixels
};

// Each is inserted in front of the others.
constexpr Column kColumns[] = {
    {BookmarkColumn::kTitle, IDS_TITLE, 175},
    {BookmarkColumn::kTime, IDS_TIME, 45},
    {BookmarkColumn::kState, 0, 18},
};

struct Sorting {
  const BookmarkStore& store;
  const BookmarkOrder& order;
};

int CALLBACK CompareItems(LPARAM a, LPARAM b, LPARAM parameter) {
  const auto& sorting = *reinterpret_cast<const Sorting*>(parameter);
  const int32_t first = static_cast<int32_t>(a);
  const int32_t second = static_cast<int32_t>(b);
  if (!sorting.store.Contains(first) || !sorting.store.Contains(second)) return 0;
  return sorting.order.Compare(sorting.store, first, second);
}

}  // namespace

bool BookmarksDialog::OnInit() noexcept {
  MakeFullScreen(window(), SHIDIF_SIPDOWN);
  SHMENUBARINFO bar = {};
  bar.cbSize = sizeof(bar);
  bar.hwndParent = window();
  bar.nToolBarId = IDM_BOOKMARKS;
  bar.hInstRes = OwnModule();
  bar.nBmpId = IDB_MENU_BAR;
  bar.cBmpImages = 9;
  CreateLocalizedMenuBar(&bar);
  CreateList();
  Stretch();
  store_.Load();
  Fill();
  return true;
}

void BookmarksDialog::CreateList() noexcept {
  list_ = control(IDC_BOOKMARK_LIST);
  constexpr int kIcons[] = {IDI_FILE_PRESENT, IDI_FILE_MISSING};
  images_ = LoadIconList(OwnModule(), kIcons, 2);
  ListView_SetImageList(list_, images_.get(), LVSIL_SMALL);
  ListView_SetExtendedListViewStyleEx(list_, 0, LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
  for (const Column& column : kColumns) {
    LVCOLUMNW inserted = {};
    inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    inserted.cx = column.width;
    inserted.iSubItem = static_cast<int>(column.column);
    const wchar_t* heading =
        column.heading ? LoadLocalizedString(OwnModule(), column.heading) : L"";
    inserted.pszText = const_cast<wchar_t*>(heading);
    SendMessageW(list_, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&inserted));
  }
}

void BookmarksDialog::Stretch() noexcept {
  RECT client;
  if (list_ && GetClientRect(window(), &client)) {
    MoveWindow(list_, 0, 0, client.right, client.bottom, TRUE);
  }
}

void BookmarksDialog::Fill() noexcept {
  SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
  ListView_DeleteAllItems(list_);
  const int count = static_cast<int>(store_.size());
  for (int i = 0; i < count; ++i) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = i;
    item.pszText = LPSTR_TEXTCALLBACKW;
    item.iImage = I_IMAGECALLBACK;
    item.lParam = i;
    const LRESULT at = SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    if (at < 0) break;
    for (item.iSubItem = 1; item.iSubItem <= 2; ++item.iSubItem) {
      SendMessageW(list_, LVM_SETITEMTEXTW, static_cast<WPARAM>(at),
                   reinterpret_cast<LPARAM>(&item));
    }
  }
  Sort();
  SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list_, nullptr, TRUE);
}

void BookmarksDialog::Sort() noexcept {
  const Sorting sorting = {store_, order_};
  ListView_SortItems(list_, CompareItems, reinterpret_cast<LPARAM>(&sorting));
}

void BookmarksDialog::Tell(LVITEMW* item) noexcept {
  const int32_t index = static_cast<int32_t>(item->lParam);
  const bool known = store_.Contains(index);
  if (item->mask & LVIF_IMAGE) {
    item->iImage = known && store_.IsAlive(index) ? kImagePresent : kImageMissing;
  }
  if (!(item->mask & LVIF_TEXT)) return;
  const wchar_t* text = L"";
  if (known && item->iSubItem == static_cast<int>(BookmarkColumn::kTime)) {
    FormatListPosition(store_.At(index).position_s, position_);
    text = position_;
  } else if (known && item->iSubItem == static_cast<int>(BookmarkColumn::kTitle)) {
    text = store_.At(index).description.c_str();
  }
  item->pszText = const_cast<wchar_t*>(text);
}

int32_t BookmarksDialog::IndexOf(int item) const noexcept {
  LVITEMW found = {};
  found.mask = LVIF_PARAM;
  found.iItem = item;
  const bool there =
      item >= 0 && SendMessageW(list_, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&found)) != 0;
  const int32_t index = static_cast<int32_t>(found.lParam);
  return there && store_.Contains(index) ? index : -1;
}

int32_t BookmarksDialog::CurrentIndex() const noexcept {
  const int item = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
  const bool selected = item >= 0 && ListView_GetItemState(list_, item, LVIS_SELECTED) != 0;
  return selected ? IndexOf(item) : -1;
}

void BookmarksDialog::Post(uint32_t what) noexcept {
  const int32_t index = CurrentIndex();
  if (index >= 0) PostToWindow(host_, kMessagePlayBookmark, what, index);
}

void BookmarksDialog::Edit() noexcept {
  const int32_t index = CurrentIndex();
  if (index < 0) return;
  EditBookmarkDialog dialog(store_, index);
  RunDialog(dialog, IDD_EDIT_BOOKMARK, window());
}

void BookmarksDialog::Delete() noexcept {
  if (ListView_GetSelectedCount(list_) == 0) return;
  const int item = ListView_GetSelectionMark(list_);
  const int32_t index = IndexOf(item);
  if (index < 0) return;
  store_.Remove(index);
  Fill();
  ListView_SetSelectionMark(list_, MarkAfterRemoval(item));
}

ModalDialog::Handled BookmarksDialog::OnCommand(int id, int) noexcept {
  switch (id) {
    case IDM_BOOKMARK_EDIT:
      Edit();
      return Handled::kYes;
    case IDM_BOOKMARK_PLAY:
      Post(kBookmarkPlay);
      return Handled::kYes;
    case IDM_BOOKMARK_ENQUEUE:
      Post(kBookmarkEnqueue);
      return Handled::kYes;
    case IDM_BOOKMARK_DELETE:
      Delete();
      return Handled::kYes;
    case IDM_BOOKMARK_DELETE_DEAD:
      store_.RemoveDead();
      Fill();
      return Handled::kYes;
    case IDOK:
    case IDCANCEL:
      Close(id);
      return Handled::kYes;
    default:
      return Handled::kNo;
  }
}

ModalDialog::Handled BookmarksDialog::OnMessage(UINT message, WPARAM wparam, LPARAM lparam,
                                                LRESULT*) noexcept {
  switch (message) {
    case WM_SIZE:
      Stretch();
      return Handled::kYes;
    case WM_SETTINGCHANGE: {
      SHACTIVATEINFO activation = {};
      activation.cbSize = sizeof(activation);
      SHHandleWMSettingChange(window(), wparam, lparam, &activation);
      return Handled::kYes;
    }
    case WM_NOTIFY: {
      const NMHDR* header = reinterpret_cast<const NMHDR*>(lparam);
      if (header->idFrom != IDC_BOOKMARK_LIST) return Handled::kNo;
      if (header->code == LVN_GETDISPINFOW) {
        Tell(&reinterpret_cast<NMLVDISPINFOW*>(lparam)->item);
      } else if (header->code == LVN_COLUMNCLICK) {
        order_.Click(
            static_cast<BookmarkColumn>(reinterpret_cast<const NMLISTVIEW*>(lparam)->iSubItem));
        Sort();
      } else {
        return Handled::kNo;
      }
      return Handled::kYes;
    }
    default:
      return Handled::kNo;
  }
}

}  // namespace kelvo
