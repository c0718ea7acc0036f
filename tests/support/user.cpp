#include "tests/support/user.h"

#include <prsht.h>

#include <algorithm>
#include <memory>

#include "tests/support/wide_text.h"

namespace kelvo::test {
namespace {

constexpr UINT kRunMessage = WM_APP + 1;
constexpr UINT kStartMessage = WM_APP + 2;
constexpr wchar_t kHands[] = L"KelvoTestHands";

using Action = std::function<void()>;

LRESULT CALLBACK HandsProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kRunMessage) (*reinterpret_cast<const Action*>(lparam))();
  if (message == kStartMessage) {
    const std::unique_ptr<Action> action(reinterpret_cast<Action*>(lparam));
    (*action)();
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

bool IsKind(HWND window, const wchar_t* kind) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return lstrcmpW(name, kind) == 0;
}

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

template <class Item>
LPARAM Parameter(Item* item) {
  return reinterpret_cast<LPARAM>(item);
}

std::string CellOf(HWND list, int item, int column) {
  wchar_t text[300] = L"";
  LVITEMW cell = {};
  cell.iSubItem = column;
  cell.pszText = text;
  cell.cchTextMax = 300;
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(item), Parameter(&cell));
  return Utf8(cell.pszText);
}

std::string NodesFrom(HWND tree, HTREEITEM from, size_t depth) {
  std::string all;
  for (HTREEITEM item = from; item; item = TreeView_GetNextSibling(tree, item)) {
    const bool checked = TreeView_GetCheckState(tree, item) == 1;
    all += std::string(depth, ' ') + User::Label(tree, item) + (checked ? " x\n" : "\n");
    all += NodesFrom(tree, TreeView_GetChild(tree, item), depth + 1);
  }
  return all;
}

HTREEITEM FindNode(HWND tree, const std::string& path) {
  HTREEITEM item = path.empty() ? nullptr : TreeView_GetRoot(tree);
  for (size_t at = 0; item;) {
    const size_t end = std::min(path.find('\\', at + 1), path.size());
    while (item && User::Label(tree, item) != path.substr(at, end - at)) {
      item = TreeView_GetNextSibling(tree, item);
    }
    if (!item || end == path.size()) break;
    item = TreeView_GetChild(tree, item);
    at = end + 1;
  }
  return item;
}

LPARAM MoveTo(HWND window, POINT at) {
  POINT on_screen = at;
  ClientToScreen(window, &on_screen);
  SetCursorPos(on_screen.x, on_screen.y);
  return MAKELPARAM(at.x, at.y);
}

POINT MiddleOf(const RECT& place) {
  return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

}  // namespace

bool WaitFor(const std::function<bool()>& done) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < 30000; Sleep(10)) {
    if (done()) return true;
  }
  return false;
}

User::User(Complain complain) : complain_(complain), thread_(GetCurrentThreadId()) {
  WNDCLASSW type = {};
  type.lpfnWndProc = &HandsProcedure;
  type.lpszClassName = kHands;
  RegisterClassW(&type);
  hands_ = CreateWindowExW(0, kHands, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

User::~User() {
  DestroyWindow(hands_);
}

void User::Run(const Action& action) const {
  SendMessageW(hands_, kRunMessage, 0, Parameter(&action));
}

void User::Start(Action action) const {
  PostMessageW(hands_, kStartMessage, 0, Parameter(new Action(std::move(action))));
}

void User::Settle() const {
  for (int i = 0; i < 3; ++i) {
    const HANDLE reached = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    Start([reached] { SetEvent(reached); });
    if (WaitForSingleObject(reached, 30000) != WAIT_OBJECT_0) complain_("the thread is deaf");
    CloseHandle(reached);
  }
}

bool User::Wait(const std::string& what, const std::function<bool()>& done) const {
  if (WaitFor(done)) return true;
  complain_("waited in vain: " + what);
  return false;
}

HWND User::FindAny(const std::function<bool(HWND)>& fits) const {
  Search search = {fits};
  EnumThreadWindows(thread_, &Look, Parameter(&search));
  return search.found;
}

HWND User::Find(const wchar_t* caption, const wchar_t* kind, bool enabled) const {
  return FindAny([&](HWND window) {
    return IsKind(window, kind) && (!caption || Text(window) == Utf8(caption)) &&
           (!enabled || IsWindowEnabled(window));
  });
}

HWND User::WaitForWindow(const wchar_t* caption) const {
  HWND found = nullptr;
  Wait(Utf8(caption), [&] { return (found = Window(caption)) != nullptr; });
  return found;
}

HWND User::NextDialog(HWND below) const {
  HWND top = nullptr;
  Wait("what follows", [&] { return (top = Dialog()) != nullptr && top != below; });
  return IsWindow(below) ? top : nullptr;
}

HWND User::Page(HWND dialog) const {
  if (!dialog) dialog = Dialog();
  const auto page = reinterpret_cast<HWND>(SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0));
  return page && IsChild(dialog, page) ? page : dialog;
}

HWND User::MenuBar() const {
  const HWND dialog = Dialog();
  return FindAny([&](HWND window) {
    return IsKind(window, L"KelvoMenuBar") && GetWindow(window, GW_OWNER) == dialog;
  });
}

std::string User::Text(HWND window) {
  wchar_t text[300] = L"";
  GetWindowTextW(window, text, 300);
  return Utf8(text);
}

std::string User::BoxText(HWND box) {
  std::string all;
  HWND label = nullptr;
  while ((label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr) all += Text(label);
  return all;
}

void User::Do(int command) const {
  SendMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void User::Post(int command) const {
  PostMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void User::Answer(HWND dialog, int answer) const {
  SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(answer), 0);
  Wait("a dialog's end", [&] { return !IsWindow(dialog); });
  Settle();
}

void User::Done() const {
  PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void User::GoTo(int page) const {
  SendMessageW(Dialog(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
}

bool User::Enabled(int command) const {
  return SendMessageW(MenuBar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
}

void User::Key(HWND window, WPARAM key) const {
  PostMessageW(window, WM_KEYDOWN, key, 0);
  PostMessageW(window, WM_KEYUP, key, 0);
}

std::string User::Items(HWND list) const {
  std::string all;
  Run([&] {
    for (int i = 0, count = ListView_GetItemCount(list); i < count; ++i) {
      const UINT state = ListView_GetItemState(list, i, ~0u);
      all += CellOf(list, i, 0) + ((state >> 12) == 2 ? " x" : "") +
             ((state & LVIS_SELECTED) ? " *\n" : "\n");
    }
  });
  return all;
}

std::string User::Cell(HWND list, int item, int column) const {
  std::string text;
  Run([&] { text = CellOf(list, item, column); });
  return text;
}

void User::Check(HWND list, int item, bool checked) {
  ListView_SetItemState(list, item, INDEXTOSTATEIMAGEMASK(checked ? 2 : 1), LVIS_STATEIMAGEMASK);
}

void User::Select(HWND list, int item, bool selected) {
  ListView_SetItemState(list, item, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
}

std::string User::Columns(HWND list) const {
  std::string all;
  Run([&] {
    wchar_t text[100] = L"";
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = text;
    column.cchTextMax = 100;
    for (WPARAM i = 0; SendMessageW(list, LVM_GETCOLUMNW, i, Parameter(&column)); ++i) {
      all += (i > 0 ? "|" : "") + Utf8(text) + " " + std::to_string(column.cx);
    }
  });
  return all;
}

void User::TapHeader(HWND list, int column) const {
  const HWND header = ListView_GetHeader(list);
  Run([&] {
    RECT place = {};
    SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), Parameter(&place));
    ListView_Scroll(list, place.left - GetScrollPos(list, SB_HORZ), 0);
    const LPARAM at = MAKELPARAM(MiddleOf(place).x, MiddleOf(place).y);
    SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(header, WM_LBUTTONUP, 0, at);
  });
}

std::string User::Nodes(HWND tree) const {
  std::string all;
  Run([&] { all = NodesFrom(tree, TreeView_GetRoot(tree), 0); });
  return all;
}

HTREEITEM User::Node(HWND tree, const std::string& path) const {
  HTREEITEM item = nullptr;
  Run([&] { item = FindNode(tree, path); });
  return item;
}

void User::SelectNode(HWND tree, const std::string& path) const {
  const HTREEITEM item = Node(tree, path);
  if (!item && !path.empty()) complain_("no node " + path);
  TreeView_SelectItem(tree, item);
}

void User::ExpandAll(HWND tree) const {
  Run([&] {
    for (HTREEITEM item = TreeView_GetRoot(tree); item;
         item = TreeView_GetNextVisible(tree, item)) {
      TreeView_Expand(tree, item, TVE_EXPAND);
    }
  });
}

std::string User::Label(HWND tree, HTREEITEM item) {
  wchar_t text[300] = L"";
  TVITEMW node = {};
  node.mask = TVIF_HANDLE | TVIF_TEXT;
  node.hItem = item;
  node.pszText = text;
  node.cchTextMax = 300;
  SendMessageW(tree, TVM_GETITEMW, 0, Parameter(&node));
  return Utf8(text);
}

void User::Tap(HWND window, POINT at) const {
  StartTap(window, at);
  Settle();
}

// The messages are made on the windows' thread: no move that is still on its way can come between
// the pointer and them.
void User::StartTap(HWND window, POINT at, UINT down, UINT up) const {
  Run([&] {
    const LPARAM point = MoveTo(window, at);
    PostMessageW(window, down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, point);
    PostMessageW(window, up, 0, point);
  });
}

void User::Hold(HWND window, POINT at) const {
  Run([&] {
    const LPARAM point = MoveTo(window, at);
    Press(VK_LBUTTON);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
  });
}

// The button that the windows' thread believes to be down; 0 is none.
void User::Press(int button) const {
  Run([button] {
    BYTE keys[256] = {};
    if (button != 0) keys[button] = 0x80;
    SetKeyboardState(keys);
  });
}

POINT User::PartAlong(const RECT& line, const std::function<bool(POINT)>& is_there) const {
  POINT at = {line.left, MiddleOf(line).y};
  while (at.x < line.right && !is_there(at)) ++at.x;
  at.x += 2;  // not on its edge
  if (!is_there(at)) complain_("no such part of an item");
  return at;
}

POINT User::PartOf(HWND tree, HTREEITEM item, UINT part) const {
  POINT found = {};
  Run([&] {
    RECT line = {};
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    TreeView_GetItemRect(tree, item, &line, FALSE);
    found = PartAlong(line, [&](POINT at) {
      TVHITTESTINFO hit = {};
      hit.pt = at;
      return TreeView_HitTest(tree, &hit) == item && hit.flags == part;
    });
  });
  return found;
}

POINT User::PartOf(HWND list, int item, UINT part) const {
  POINT found = {};
  Run([&] {
    RECT line = {};
    ListView_GetItemRect(list, item, &line, LVIR_BOUNDS);
    found = PartAlong(line, [&](POINT at) {
      LVHITTESTINFO hit = {};
      hit.pt = at;
      return ListView_HitTest(list, &hit) == item && hit.flags == part;
    });
  });
  return found;
}

void User::TapTree(HWND tree, const std::string& path, UINT part) const {
  const HTREEITEM item = Node(tree, path);
  if (!item) return complain_("no node " + path);
  Tap(tree, PartOf(tree, item, part));
}

void User::StartTapOnButton(int command) const {
  const HWND toolbar = FindWindowExW(MenuBar(), nullptr, TOOLBARCLASSNAMEW, nullptr);
  RECT place = {};
  SendMessageW(toolbar, TB_GETRECT, static_cast<WPARAM>(command), Parameter(&place));
  StartTap(toolbar, MiddleOf(place));
}

HWND User::WaitForMenu() const {
  HWND menu = nullptr;
  Wait("a menu", [&] { return (menu = Menu()) != nullptr; });
  return menu;
}

std::string User::MenuItems() const {
  constexpr UINT kGetMenu = 0x01E1;
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(WaitForMenu(), kGetMenu, 0, 0));
  std::string all;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    wchar_t text[100] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 100, MF_BYPOSITION);
    all += Utf8(text) + " " + std::to_string(GetMenuItemID(menu, i)) + "\n";
  }
  return all;
}

void User::ChooseMenuItem(int item) const {
  const HWND menu = WaitForMenu();
  PostMessageW(menu, WM_KEYDOWN, VK_HOME, 0);
  for (int i = 0; i < item; ++i) PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
  PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
  AwaitMenusEnd(menu);
}

void User::LeaveMenu() const {
  const HWND menu = WaitForMenu();
  PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
  AwaitMenusEnd(menu);
}

void User::AwaitMenusEnd(HWND menu) const {
  Wait("a menu's end", [&] { return !IsWindow(menu) || !IsWindowVisible(menu); });
}

}  // namespace kelvo::test
