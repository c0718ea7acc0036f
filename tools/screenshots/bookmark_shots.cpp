#include <kelvo/bookmarks.h>

#include "res/resource_ids.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

constexpr struct {
  const wchar_t* path;
  int position_s;
  const wchar_t* description;
} kBookmarks[] = {
    {L"\\Music\\Ring Buffers\\Eight Bars.ogg", 71, L"Ring Buffers - Eight Bars"},
    {L"\\Music\\gone.ogg", 3725, L"A file that is gone"},
    {L"\\My Documents\\Memo.ogg", 12075, L"A very long description, longer than the column"},
    {L"\\Music\\Sine Trio\\Waves\\01 Crest.ogg", 5, L"Sine Trio - Crest"},
};

void FillList(User& user) {
  const HWND list = user.Control(IDC_BOOKMARK_LIST);
  user.Wait("the bookmarks", [&] { return ListView_GetItemCount(list) > 0; });
  user.TapList(list, 0, LVHT_ONITEMICON);  // the column has no room for a text
}

void OpenMenu(User& user) {
  user.OpenMenu(IDM_BOOKMARK_POPUP);
}

void CloseMenu(User& user) {
  user.LeaveMenu();
}

void Edit(User& user) {
  user.OpenByCommand(IDM_BOOKMARK_EDIT);
}

void Cancel(User& user) {
  user.CloseBy(IDCANCEL);
}

constexpr Shot kShots[] = {
    {L"bookmarks", FillList, nullptr},
    {L"bookmarks-menu", OpenMenu, CloseMenu},
    {L"bookmark-edit", Edit, Cancel},
};

void Open(Studio& session) {
  auto* bookmarks = session.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  bookmarks->LoadBookmarks();
  for (const auto& bookmark : kBookmarks) {
    bookmarks->AddBookmark(bookmark.path, bookmark.position_s, bookmark.description);
  }
  bookmarks->ShowBookmarks(session.window());
}

void Close(User& user) {
  user.Done();
}

}  // namespace

const Group kBookmarkGroup = MakeGroup(Open, kShots, Close);

}  // namespace screenshots
