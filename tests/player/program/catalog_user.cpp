#include "tests/player/program/catalog_user.h"

#include <prsht.h>
#include <string.h>

#include "res/resource_ids.h"
#include "tests/player/program/remote.h"

namespace velmora::test {
namespace {

constexpr UINT kChecked = 2;

struct NodeText {
  wchar_t text[260];
};

}  // namespace

bool CatalogUser::Open() {
  player_.Do(kCommandCatalog);
  sheet_ = player_.WaitForWindow(L"#32770", L"Playlist Organizer");
  if (!sheet_) return false;
  GoTo(kMedia);
  return player_.WaitFor("the media that the catalog finds", [&] {
    return player_.Send(GetDlgItem(page(), IDC_TREE), TVM_GETCOUNT) > 0;
  });
}

void CatalogUser::Close() {
  PostMessageW(sheet_, WM_SYSCOMMAND, SC_CLOSE, 0);
  player_.WaitFor("the end of the catalog", [&] { return !IsWindow(sheet_); });
}

void CatalogUser::GoTo(Page page) {
  player_.Send(sheet_, PSM_SETCURSEL, page);
}

HWND CatalogUser::page() const {
  return reinterpret_cast<HWND>(player_.Send(sheet_, PSM_GETCURRENTPAGEHWND));
}

void CatalogUser::Press(int command) {
  const HWND bar =
      FindWindowExW(player_.WaitForWindow(L"KelvoMenuBar"), nullptr, TOOLBARCLASSNAMEW, nullptr);
  const LRESULT button = player_.Send(bar, TB_COMMANDTOINDEX, static_cast<WPARAM>(command));
  const Remote<RECT> rect(player_.process(), {});
  ASSERT_TRUE(player_.Send(bar, TB_GETITEMRECT, static_cast<WPARAM>(button), rect.address()));
  const RECT place = rect.Read();
  player_.Click(bar, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

HTREEITEM CatalogUser::FindTopNode(const wchar_t* text) const {
  const HWND tree = GetDlgItem(page(), IDC_TREE);
  WPARAM relation = TVGN_ROOT;
  for (LPARAM node = 0; (node = player_.Send(tree, TVM_GETNEXTITEM, relation, node)) != 0;
       relation = TVGN_NEXT) {
    const Remote<NodeText> remote(player_.process(), {});
    TVITEMW item = {};
    item.mask = TVIF_HANDLE | TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(node);
    item.pszText = reinterpret_cast<wchar_t*>(remote.address());
    item.cchTextMax = 260;
    const Remote<TVITEMW> question(player_.process(), item);
    player_.Send(tree, TVM_GETITEMW, 0, question.address());
    if (lstrcmpW(remote.Read().text, text) == 0) return item.hItem;
  }
  return nullptr;
}

// Where the box is on the left of the text: -1 when it is not there.
int CatalogUser::BoxOf(HTREEITEM node, const RECT& text) const {
  const HWND tree = GetDlgItem(page(), IDC_TREE);
  for (int x = text.left; x >= 0; --x) {
    TVHITTESTINFO hit = {};
    hit.pt = {x, (text.top + text.bottom) / 2};
    const Remote<TVHITTESTINFO> remote(player_.process(), hit);
    player_.Send(tree, TVM_HITTEST, 0, remote.address());
    hit = remote.Read();
    if (hit.hItem == node && (hit.flags & TVHT_ONITEMSTATEICON) != 0) return x - 3;
  }
  return -1;
}

bool CatalogUser::CheckTopNode(const wchar_t* text) {
  const HTREEITEM node = FindTopNode(text);
  if (!node) return false;
  const HWND tree = GetDlgItem(page(), IDC_TREE);
  player_.Send(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(node));
  RECT place = {};
  memcpy(&place, &node, sizeof node);
  const Remote<RECT> remote(player_.process(), place);
  player_.Send(tree, TVM_GETITEMRECT, TRUE, remote.address());
  place = remote.Read();
  const int x = BoxOf(node, place);
  if (x < 0) return false;
  ClickWithCursor(tree, x, (place.top + place.bottom) / 2);
  return player_.WaitFor("the check mark", [&] {
    return (player_.Send(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(node),
                         TVIS_STATEIMAGEMASK) >>
            12) == kChecked;
  });
}

// Also for windows that ask where the mouse has been.
void CatalogUser::ClickWithCursor(HWND window, int x, int y) const {
  POINT at = {x, y};
  ClientToScreen(window, &at);
  SetCursorPos(at.x, at.y);
  player_.Click(window, x, y);
}

}  // namespace velmora::test
