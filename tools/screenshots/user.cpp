#include "tools/screenshots/user.h"

#include <prsht.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

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
  return Find(ui_thread_, [](HWND window) {
    return (IsKind(window, L"#32770") || IsKind(window, L"VelmoraMain")) && IsWindowEnabled(window);
  });
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

std::vector<RECT> User::Windows() const {
  std::vector<RECT> all;
  Find(ui_thread_, [&](HWND window) {
    constexpr const wchar_t* kKinds[] = {L"#32770",         L"#32768",      L"ComboLBox",
                                         L"KelvoMenuBar",   L"VelmoraMain", L"VelmoraEqualizer",
                                         L"VelmoraPlaylist"};
    if (std::none_of(std::begin(kKinds), std::end(kKinds),
                     [&](const wchar_t* kind) { return IsKind(window, kind); })) {
      return false;
    }
    RECT place;
    GetWindowRect(window, &place);
    all.push_back(place);
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
  SendMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void User::OpenByCommand(int id) const {
  ChangeDialog([&] { PostMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(id), 0); });
}

void User::CloseBy(int id) const {
  const HWND dialog = Dialog();
  PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
  Wait("the dialog's end", [&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); });
  if (Dialog()) Activate();
}

// Without a window manager the display takes the focus from everyone when the window that has it
// goes, some time after the program gave it to the next one.
void User::Activate() const {
  int steady = 0;
  Wait("the foreground", [&] {
    const HWND dialog = Dialog();
    steady = GetForegroundWindow() == dialog ? steady + 1 : 0;
    if (steady == 0) SetForegroundWindow(dialog);
    Sleep(20);
    return steady > 5;
  });
}

void User::Done() const {
  PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void User::GoTo(int page) const {
  SendMessageW(Dialog(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
  Activate();
}

void User::Click(HWND window, POINT at, DWORD down, DWORD up) const {
  Activate();
  ClientToScreen(window, &at);
  SetCursorPos(at.x, at.y);
  mouse_event(down, 0, 0, 0, 0);
  mouse_event(up, 0, 0, 0, 0);
  Sleep(200);  // the input takes its way through the display
  SetCursorPos(0, 0);
}

void User::Tap(HWND window, POINT at) const {
  Click(window, at, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
  SendMessageW(window, WM_NULL, 0, 0);
}

bool User::InMenu() const {
  return Find(ui_thread_, [](HWND window) { return IsKind(window, L"#32768"); }) != nullptr;
}

void User::OpenMenuAt(HWND window, POINT at, DWORD down, DWORD up) const {
  Wait("a menu", [&] {
    Click(window, at, down, up);  // one that comes too early is lost
    return InMenu();
  });
}

void User::OpenMenu(int button) const {
  const HWND toolbar = FindWindowExW(MenuBar(), nullptr, TOOLBARCLASSNAMEW, nullptr);
  RECT place = {};
  SendMessageW(toolbar, TB_GETRECT, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&place));
  OpenMenuAt(toolbar, {(place.left + place.right) / 2, (place.top + place.bottom) / 2},
             MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
}

void User::OpenContextMenu(HWND control, POINT at) const {
  OpenMenuAt(control, at, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
}

void User::CloseMenu() const {
  PostMessageW(Page(), WM_KEYDOWN, VK_ESCAPE, 0);
  Wait("the menu's end", [&] { return !InMenu(); });
}

// On the handheld a box is in the middle of its small screen, not of the desktop's.
void User::OpenBox(int command) const {
  const HWND below = Dialog();
  OpenByCommand(command);
  RECT screen;
  RECT box;
  GetWindowRect(below, &screen);
  GetWindowRect(Dialog(), &box);
  SetWindowPos(Dialog(), nullptr, (screen.left + screen.right - (box.right - box.left)) / 2,
               (screen.top + screen.bottom - (box.bottom - box.top)) / 2, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
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

POINT ListItemText(HWND list, int item) {
  RECT place = {LVIR_LABEL, 0, 0, 0};
  SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
  return {place.left + 20, (place.top + place.bottom) / 2};
}

void CheckListItem(HWND list, int item) {
  ListView_SetItemState(list, item, INDEXTOSTATEIMAGEMASK(2), LVIS_STATEIMAGEMASK);
}

}  // namespace screenshots
