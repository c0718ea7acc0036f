#include "base/sync/thread.h"
#include "base/windows/dialog.h"
#include "base/windows/enter_key.h"
#include "base/windows/feature_dialog.h"
#include "base/windows/registry.h"
#include "base/windows/resources.h"
#include "bookmarks/bookmarks_feature.h"
#include "bookmarks/windows/edit_bookmark_dialog.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "kelvo/messages.h"
#include "kelvo/settings.h"
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

int CALLBACK CompareItems(LPARAM a, LPARAM b, LPARAM parameter) {
  const BookmarkStore& store = *reinterpret_cast<const BookmarkStore*>(parameter);
  const int32_t first = static_cast<int32_t>(a);
  const int32_t second = static_cast<int32_t>(b);
  return store.Contains(first) && store.Contains(second) ? store.Compare(first, second) : 0;
}

// The list of bookmarks with its menu bar. An item's data is the bookmark's index in the store; the
// texts and images are asked for when they are drawn.
//
// The host works while the dialog runs and may change the store through the feature: an index of an
// item is checked before each use.
class BookmarksDialog final : public ModalDialog {
 public:
  // `host`, which may be null, receives the messages about bookmarks. Both are borrowed.
  BookmarksDialog(HWND host, BookmarkStore& store) noexcept
      : host_(host), store_(store), state_(store.state()) {}

 private:
  bool OnInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) noexcept override;
  void OnDestroy() noexcept override;

  HWND list() const noexcept { return static_cast<HWND>(state_.list_view); }
  void CreateList() noexcept;
  void Stretch() noexcept;
  void Fill() noexcept;
  void Sort() noexcept;
  void Describe(LVITEMW* item) noexcept;

  int32_t IndexOf(int item) const noexcept;  // -1 when there is no such item
  int32_t CurrentIndex() const noexcept;     // of the focused item, if it is selected; or -1
  void Post(uint32_t what) noexcept;
  void Edit() noexcept;
  void Delete() noexcept;

  HWND host_;
  BookmarkStore& store_;
  BookmarksState& state_;
  UniqueIconList images_;
  int extra_ = 0;  // pixels that the title's column has been given
  SHACTIVATEINFO activation_ = {sizeof(SHACTIVATEINFO), nullptr, 0, 0, 0, 0};
};

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
  state_.window = window();
  state_.menu_bar = bar.hwndMB;
  CreateList();
  Stretch();
  store_.Load();
  Fill();
  return true;
}

void BookmarksDialog::CreateList() noexcept {
  state_.list_view = control(IDC_BOOKMARK_LIST);
  LeaveEnterTo(list());
  constexpr int kIcons[] = {IDI_FILE_PRESENT, IDI_FILE_MISSING};
  images_ = LoadIconList(OwnModule(), kIcons, 2);
  ListView_SetImageList(list(), images_.get(), LVSIL_SMALL);
  ListView_SetExtendedListViewStyleEx(list(), 0, LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
  for (const Column& column : kColumns) {
    LVCOLUMNW inserted = {};
    inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    inserted.cx = column.width;
    inserted.iSubItem = static_cast<int>(column.column);
    const wchar_t* heading =
        column.heading ? LoadLocalizedString(OwnModule(), column.heading) : L"";
    inserted.pszText = const_cast<wchar_t*>(heading);
    SendMessageW(list(), LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&inserted));
  }
}

void BookmarksDialog::Stretch() noexcept {
  RECT client;
  if (!list() || !GetClientRect(window(), &client)) return;
  MoveWindow(list(), 0, 0, client.right, client.bottom, TRUE);
  // The title, the last column, takes what a wider screen has.
  const int extra = ExtraWidth(window());
  if (extra == extra_) return;
  const int title = static_cast<int>(BookmarkColumn::kTitle);
  ListView_SetColumnWidth(list(), title, ListView_GetColumnWidth(list(), title) + extra - extra_);
  extra_ = extra;
}

void BookmarksDialog::Fill() noexcept {
  SendMessageW(list(), WM_SETREDRAW, FALSE, 0);
  ListView_DeleteAllItems(list());
  for (int i = 0, count = store_.size(); i < count; ++i) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = i;
    item.pszText = LPSTR_TEXTCALLBACKW;
    item.iImage = I_IMAGECALLBACK;
    item.lParam = i;
    const LRESULT at = SendMessageW(list(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    if (at < 0) break;
    for (item.iSubItem = 1; item.iSubItem <= 2; ++item.iSubItem) {
      SendMessageW(list(), LVM_SETITEMTEXTW, static_cast<WPARAM>(at),
                   reinterpret_cast<LPARAM>(&item));
    }
  }
  Sort();
  SendMessageW(list(), WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list(), nullptr, TRUE);
}

void BookmarksDialog::Sort() noexcept {
  ListView_SortItems(list(), CompareItems, reinterpret_cast<LPARAM>(&store_));
}

void BookmarksDialog::Describe(LVITEMW* item) noexcept {
  const int32_t index = static_cast<int32_t>(item->lParam);
  const bool known = store_.Contains(index);
  if (item->mask & LVIF_IMAGE) {
    item->iImage = known && store_.IsAlive(index) ? kImagePresent : kImageMissing;
  }
  if (!(item->mask & LVIF_TEXT)) return;
  const wchar_t* text = L"";
  if (known && item->iSubItem == static_cast<int>(BookmarkColumn::kTime)) {
    FormatListPosition(store_.At(index).position_s, state_.position_text);
    text = state_.position_text;
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
      item >= 0 && SendMessageW(list(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&found)) != 0;
  const int32_t index = static_cast<int32_t>(found.lParam);
  return there && store_.Contains(index) ? index : -1;
}

int32_t BookmarksDialog::CurrentIndex() const noexcept {
  const int item = ListView_GetNextItem(list(), -1, LVNI_FOCUSED);
  const bool selected = item >= 0 && ListView_GetItemState(list(), item, LVIS_SELECTED) != 0;
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
  if (ListView_GetSelectedCount(list()) == 0) return;
  const int item = ListView_GetSelectionMark(list());
  const int32_t index = IndexOf(item);
  if (index < 0) return;
  store_.Remove(index);
  Fill();
  ListView_SetSelectionMark(list(), item > 0 ? item - 1 : 0);
}

void BookmarksDialog::OnDestroy() noexcept {
  // Or a list without the style that shares image lists, in a translated dialog, would destroy it
  // too.
  ListView_SetImageList(list(), nullptr, LVSIL_SMALL);
  state_.window = state_.list_view = state_.menu_bar = nullptr;
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
    case WM_SETTINGCHANGE:
      SHHandleWMSettingChange(window(), wparam, lparam, &activation_);
      return Handled::kYes;
    case WM_NOTIFY: {
      const NMHDR* header = reinterpret_cast<const NMHDR*>(lparam);
      if (header->idFrom != IDC_BOOKMARK_LIST) return Handled::kNo;
      if (header->code == LVN_GETDISPINFOW) {
        Describe(&reinterpret_cast<NMLVDISPINFOW*>(lparam)->item);
      } else if (header->code == LVN_COLUMNCLICK) {
        store_.SortBy(
            static_cast<BookmarkColumn>(reinterpret_cast<const NMLISTVIEW*>(lparam)->iSubItem));
        Sort();
      } else if (header->code == NM_DBLCLK ||
                 (header->code == LVN_KEYDOWN &&
                  reinterpret_cast<const NMLVKEYDOWN*>(lparam)->wVKey == VK_RETURN)) {
        Post(kBookmarkPlay);
      } else {
        return Handled::kNo;
      }
      return Handled::kYes;
    }
    default:
      return Handled::kNo;
  }
}

}  // namespace

bool BookmarksShell::Run(WindowHandle parent, BookmarkStore& store) noexcept {
  const DialogGuard guard;
  if (!guard.taken()) return false;
  InitCommonControls();
  const HWND host = static_cast<HWND>(parent);
  BookmarksDialog dialog(host, store);
  RunDialog(dialog, IDD_BOOKMARKS, host);
  return true;
}

void RegisteredInstallFolder::Read(wchar_t (&folder)[kTextCapacity]) noexcept {
  const RegistryKey key = RegistryKey::Open(kInstallationKey);
  // Without the value the buffer is empty.
  static_cast<void>(key.ReadText(kInstallFolderValue, folder, kTextCapacity));
}

}  // namespace kelvo
