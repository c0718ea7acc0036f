#include "tools/screenshots/user.h"

#include <prsht.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/windows/pocketpc.h"

namespace screenshots {
namespace {

constexpr DWORD kPatienceMs = 20000;

bool IsKind(HWND window, const wchar_t* kind) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return lstrcmpW(name, kind) == 0;
}

// Of the thread's visible windows, from the one in front to the one behind, the first that fits.
struct Search {
  const std::function<bool(HWND)>& fits;
  HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
  Search& search = *reinterpret_cast<Search*>(parameter);
  if (!IsWindowVisible(window) || !search.fits(window)) return TRUE;
  search.found = window;
  return FALSE;
}

HWND Find(DWORD thread, const std::function<bool(HWND)>& fits) {
  Search search = {fits, nullptr};
  EnumThreadWindows(thread, &Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace

void User::Wait(const char* what, const std::function<bool()>& done) const {
  for (const DWORD start = GetTickCount(); !done(); Sleep(10)) {
    if (GetTickCount() - start < kPatienceMs) continue;
    std::fprintf(stderr, "screenshots: waited in vain: %s\n", what);
    std::exit(1);
  }
}

HWND User::Dialog() const {
  return Find(ui_thread_,
              [](HWND window) { return IsKind(window, L"#32770") && IsWindowEnabled(window); });
}

HWND User::Page() const {
  const HWND dialog = Dialog();
  const auto page = reinterpret_cast<HWND>(SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0));
  return page && IsChild(dialog, page) ? page : dialog;
}

HWND User::MenuBar() const {
  const HWND dialog = Dialog();
  return Find(ui_thread_, [&](HWND window) {
    return IsKind(window, L"KelvoMenuBar") && GetWindow(window, GW_OWNER) == dialog;
  });
}

RECT User::Windows() const {
  RECT all = {};
  Find(ui_thread_, [&](HWND window) {
    if (!IsKind(window, L"#32770") && !IsKind(window, L"KelvoMenuBar") &&
        !IsKind(window, L"#32768") && !IsKind(window, L"ComboLBox")) {
      return false;
    }
    RECT place;
    GetWindowRect(window, &place);
    UnionRect(&all, &all, &place);
    return false;
  });
  return all;
}

void User::WaitForDialog() const {
  Wait("a dialog", [&] { return Dialog() != nullptr; });
}

void User::ChangeDialog(const std::function<void()>& act) const {
  const HWND before = Dialog();
  act();
  Wait("another dialog", [&] { return Dialog() && Dialog() != before; });
}

void User::Command(int id) const {
  const HWND page = Page();
  PostMessageW(page, WM_COMMAND, static_cast<WPARAM>(id), 0);
  SendMessageW(page, WM_NULL, 0, 0);
}

void User::OpenByCommand(int id) const {
  ChangeDialog([&] { PostMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(id), 0); });
}

void User::CloseBy(int id) const {
  const HWND dialog = Dialog();
  PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
  Wait("the dialog's end", [&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); });
}

void User::Done() const {
  PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void User::GoTo(int page) const {
  SendMessageW(Dialog(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
}

void User::Press(HWND window, POINT at, DWORD down, DWORD up) const {
  ClientToScreen(window, &at);
  SetCursorPos(at.x, at.y);
  mouse_event(down, 0, 0, 0, 0);
  mouse_event(up, 0, 0, 0, 0);
}

void User::Tap(HWND window, POINT at) const {
  Press(window, at, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
  Sleep(200);  // the input takes its way through the display
  SendMessageW(window, WM_NULL, 0, 0);
}

bool User::InMenu() const {
  return Find(ui_thread_, [](HWND window) { return IsKind(window, L"#32768"); }) != nullptr;
}

void User::OpenMenu(int button) const {
  const HWND bar = MenuBar();
  const HWND toolbar = FindWindowExW(bar, nullptr, TOOLBARCLASSNAMEW, nullptr);
  RECT place = {};
  SendMessageW(toolbar, TB_GETRECT, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&place));
  Press(toolbar, {(place.left + place.right) / 2, (place.top + place.bottom) / 2},
        MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
  Wait("a menu of the menu bar", [&] { return InMenu(); });
}

void User::OpenContextMenu(HWND control, const RECT& item) const {
  Press(control, {item.left + 60, (item.top + item.bottom) / 2}, MOUSEEVENTF_RIGHTDOWN,
        MOUSEEVENTF_RIGHTUP);
  Wait("a context menu", [&] { return InMenu(); });
}

void User::CloseMenu() const {
  PostMessageW(Page(), WM_KEYDOWN, VK_ESCAPE, 0);
  Wait("the menu's end", [&] { return !InMenu(); });
}

HTREEITEM NextItem(HWND tree, UINT relation, HTREEITEM item) {
  return reinterpret_cast<HTREEITEM>(
      SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

void ExpandAll(HWND tree, HTREEITEM from) {
  for (HTREEITEM item = from; item; item = NextItem(tree, TVGN_NEXT, item)) {
    SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    ExpandAll(tree, NextItem(tree, TVGN_CHILD, item));
  }
}

HTREEITEM FirstLeaf(HWND tree, HTREEITEM from) {
  HTREEITEM item = from;
  while (const HTREEITEM child = NextItem(tree, TVGN_CHILD, item)) item = child;
  return item;
}

void SelectTreeItem(HWND tree, HTREEITEM item) {
  SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

RECT TreeItemLabel(HWND tree, HTREEITEM item) {
  RECT label = {};
  memcpy(&label, &item, sizeof(item));  // the message wants the item where its answer will be
  SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&label));
  return label;
}

void SelectListItem(HWND list, int item) {
  constexpr UINT kCurrent = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(list, item, kCurrent, kCurrent);
}

void CheckListItem(HWND list, int item) {
  ListView_SetItemState(list, item, INDEXTOSTATEIMAGEMASK(2), LVIS_STATEIMAGEMASK);
}

}  // namespace screenshots
