// Lists, trees, the stylus and popup menus.
#include <algorithm>

#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {
namespace {

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
