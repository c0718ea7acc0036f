#include "pocketpc/aygshell/menu_bar.h"

#include "base/memory/heap.h"
#include "base/windows/pocketpc.h"
#include "pocketpc/aygshell/frame.h"
#include "pocketpc/aygshell/hook.h"

namespace kelvo {
namespace {

constexpr wchar_t kClass[] = L"KelvoMenuBar";

constexpr int kTipRoom = 80;

constexpr LONG kBlank = 0;  // the turn of a blank bar, before that of all others

struct MenuBar {
  HWND parent;
  HWND toolbar = nullptr;
  UniqueFont font;
  MenuBarContent content;
  HMENU popups[MenuBarTable::kMaxButtons] = {};  // parts of content.menu, or the parent's own
  bool wanted = true;                            // hidden bars wait until somebody shows them
  LONG turn = kBlank;                            // the greatest one is the newest
  bool settling = false;
};

LONG next_turn = kBlank;

MenuBar* BarOf(HWND window) noexcept {
  return reinterpret_cast<MenuBar*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

template <class Visit>
BOOL CALLBACK VisitIfBar(HWND window, LPARAM visit) noexcept {
  wchar_t name[ARRAYSIZE(kClass) + 1];
  if (GetClassNameW(window, name, ARRAYSIZE(name)) && lstrcmpW(name, kClass) == 0) {
    if (MenuBar* bar = BarOf(window)) (*reinterpret_cast<Visit*>(visit))(window, bar);
  }
  return TRUE;
}

// Calls visit(window, bar) for each menu bar of this thread.
template <class Visit>
void ForEachBar(Visit visit) noexcept {
  EnumThreadWindows(GetCurrentThreadId(), &VisitIfBar<Visit>, reinterpret_cast<LPARAM>(&visit));
}

int ButtonOfCommand(const MenuBar& bar, WPARAM command) noexcept {
  for (size_t i = 0; i < bar.content.table.count; ++i) {
    if (bar.content.table.buttons[i].command == command) return static_cast<int>(i);
  }
  return -1;
}

// Opens a popup above its button, towards the middle of the screen; the choice arrives at the
// parent as WM_COMMAND.
LRESULT DropDown(const MenuBar& bar, int command) noexcept {
  const int i = ButtonOfCommand(bar, static_cast<WPARAM>(command));
  if (i < 0 || !bar.popups[i]) return TBDDRET_NODEFAULT;
  RECT button;
  SendMessageW(bar.toolbar, TB_GETITEMRECT, static_cast<WPARAM>(i),
               reinterpret_cast<LPARAM>(&button));
  MapWindowPoints(bar.toolbar, nullptr, reinterpret_cast<POINT*>(&button), 2);
  RECT row;
  GetWindowRect(bar.toolbar, &row);
  const bool leftwards = button.left + button.right > row.left + row.right;
  TPMPARAMS keep_free = {sizeof(TPMPARAMS), button};
  TrackPopupMenuEx(bar.popups[i],
                   (leftwards ? TPM_RIGHTALIGN : TPM_LEFTALIGN) | TPM_BOTTOMALIGN | TPM_VERTICAL,
                   leftwards ? button.right : button.left, button.top, bar.parent, &keep_free);
  return TBDDRET_DEFAULT;
}

// A popup is called what the menu calls it, a command what its tip says.
void AppendButton(HMENU menu, const MenuBar& bar, size_t i) noexcept {
  const MenuBarButton& button = bar.content.table.buttons[i];
  const LRESULT state = SendMessageW(bar.toolbar, TB_GETSTATE, button.command, 0);
  const UINT enabled = state >= 0 && (state & TBSTATE_ENABLED) ? MF_ENABLED : MF_GRAYED;
  wchar_t text[kTipRoom] = L"";
  if (bar.popups[i]) {
    GetMenuStringW(bar.content.menu.get(), button.popup, text, kTipRoom, MF_BYPOSITION);
    AppendMenuW(menu, MF_POPUP | enabled, reinterpret_cast<UINT_PTR>(bar.popups[i]), text);
  } else if (!(button.style & BTNS_SEP)) {
    LoadStringW(bar.content.module, button.text, text, kTipRoom);
    AppendMenuW(menu, MF_STRING | enabled, button.command, text);
  }
}

void OpenAsMenu(HWND window, const MenuBar& bar) noexcept {
  const HMENU menu = CreatePopupMenu();
  if (!menu) return;
  for (size_t i = 0; i < bar.content.table.count; ++i) AppendButton(menu, bar, i);
  RECT place = {};
  GetWindowRect(window, &place);
  TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_BOTTOMALIGN, place.left, place.top, bar.parent,
                   nullptr);
  while (RemoveMenu(menu, 0, MF_BYPOSITION)) {  // the popups are not its own
  }
  DestroyMenu(menu);
}

LRESULT OnNotify(const MenuBar& bar, NMHDR* header) noexcept {
  switch (header->code) {
    case TBN_DROPDOWN:
      return DropDown(bar, reinterpret_cast<const NMTOOLBARW*>(header)->iItem);
    case TTN_GETDISPINFOW: {
      NMTTDISPINFOW* tip = reinterpret_cast<NMTTDISPINFOW*>(header);
      const int i = ButtonOfCommand(bar, header->idFrom);
      tip->lpszText = tip->szText;
      tip->szText[0] = L'\0';
      if (i < 0 || !bar.content.table.buttons[i].HasImage()) return 0;
      LoadStringW(bar.content.module, bar.content.table.buttons[i].text, tip->szText,
                  ARRAYSIZE(tip->szText));
      return 0;
    }
    default:
      return 0;
  }
}

LRESULT SetPopup(MenuBar* bar, WPARAM command, HMENU popup) noexcept {
  const int i = ButtonOfCommand(*bar, command);
  return i < 0 ? 0 : reinterpret_cast<LRESULT>(std::exchange(bar->popups[i], popup));
}

LRESULT GetPopup(const MenuBar& bar, LPARAM command) noexcept {
  const int i = ButtonOfCommand(bar, static_cast<WPARAM>(command));
  return i < 0 ? 0 : reinterpret_cast<LRESULT>(bar.popups[i]);
}

// The parent showed or hid the bar itself.
void OnShownByParent(HWND window, MenuBar* bar, bool shown) noexcept {
  bar->wanted = shown;
  if (shown) bar->turn = ++next_turn;
  SettleMenuBars(GetWindow(window, GW_OWNER));
}

bool IsToolbarMessage(UINT message) noexcept {
  return (message >= TB_ENABLEBUTTON && message < WM_USER + 200) ||
         (message >= CCM_FIRST && message < CCM_FIRST + 0x100);
}

LRESULT CALLBACK BarProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  MenuBar* bar = BarOf(window);
  if (!bar) return DefWindowProcW(window, message, wparam, lparam);
  switch (message) {
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_SIZE:
      if (bar->toolbar) PlaceToolbar(bar->toolbar);
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT paint;
      const HDC dc = BeginPaint(window, &paint);
      RECT edge;
      GetClientRect(window, &edge);
      DrawEdge(dc, &edge, EDGE_RAISED, BF_LEFT | BF_RIGHT | BF_BOTTOM);  // goes on the frame's
      EndPaint(window, &paint);
      return 0;
    }
    case WM_COMMAND:
      // Posted: the parent may end, and the bar with it, while its toolbar still stands on the
      // stack.
      PostMessageW(bar->parent, WM_COMMAND, LOWORD(wparam), reinterpret_cast<LPARAM>(window));
      return 0;
    case WM_NOTIFY:
      return OnNotify(*bar, reinterpret_cast<NMHDR*>(lparam));
    case WM_WINDOWPOSCHANGED: {
      const LRESULT result = DefWindowProcW(window, message, wparam, lparam);
      const UINT flags = reinterpret_cast<const WINDOWPOS*>(lparam)->flags;
      if (!bar->settling && (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW))) {
        OnShownByParent(window, bar, (flags & SWP_SHOWWINDOW) != 0);
      }
      return result;
    }
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      HeapDelete(bar);
      return DefWindowProcW(window, message, wparam, lparam);
    case SHCMBM_SETSUBMENU:
      return SetPopup(bar, wparam, reinterpret_cast<HMENU>(lparam));
    case SHCMBM_GETSUBMENU:
      return GetPopup(*bar, lparam);
    default:
      if (IsToolbarMessage(message) && bar->toolbar) {
        return SendMessageW(bar->toolbar, message, wparam, lparam);
      }
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

// Keeps a parent's bars with it: seen when it is, gone when it goes.
LRESULT OnParentMessage(const HookedMessage& call) noexcept {
  const HWND parent = call.window;
  const LRESULT result = call.Pass();
  if (call.message == WM_WINDOWPOSCHANGED) {
    const UINT flags = reinterpret_cast<const WINDOWPOS*>(call.lparam)->flags;
    if (!(flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW))) return result;
    if (flags & SWP_SHOWWINDOW) {
      ForEachBar([&](HWND, MenuBar* bar) {
        if (bar->parent == parent && bar->turn != kBlank) bar->turn = ++next_turn;
      });
    }
    SettleMenuBars(GetAncestor(parent, GA_ROOT));
  } else if (call.message == WM_NCDESTROY) {
    while (const HWND bar = FindMenuBarOf(parent)) DestroyWindow(bar);
  }
  return result;
}

bool RegisterBarClass() noexcept {
  WNDCLASSEXW type = {};
  type.cbSize = sizeof(type);
  type.lpfnWndProc = &BarProc;
  type.hInstance = ThisModule();
  type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  type.lpszClassName = kClass;
  return RegisterClassExW(&type) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

// A bar that comes up lies above those that it covers: of its frame, of the dialog before.
void Place(HWND window, MenuBar* bar, bool show, const RECT& place) noexcept {
  const UINT order = show && !IsWindowVisible(window) ? 0 : SWP_NOZORDER;
  bar->settling = true;
  SetWindowPos(window, HWND_TOP, place.left, place.top, place.right - place.left,
               place.bottom - place.top,
               order | SWP_NOACTIVATE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  bar->settling = false;
}

}  // namespace

namespace {

HWND CreateBar(HWND parent, bool hidden, LONG turn, MenuBarContent content) noexcept {
  const HWND root = GetAncestor(parent, GA_ROOT);
  HeapPtr<MenuBar> made(HeapNew<MenuBar>());
  if (!root || !made || !RegisterBarClass() || !MakeFrame(root) ||
      !Hook<&OnParentMessage>(parent)) {
    return nullptr;
  }
  const RECT place = MenuBarPlace(root);
  const HWND window =
      CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, kClass, nullptr,
                      WS_POPUP | WS_CLIPCHILDREN, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, root, nullptr, ThisModule(), nullptr);
  if (!window) return nullptr;

  MenuBar* bar = made.Release();  // the window's from here on
  bar->parent = parent;
  bar->content = std::move(content);
  bar->wanted = !hidden;
  bar->turn = turn;
  const MenuBarTable& table = bar->content.table;
  for (size_t i = 0; i < table.count; ++i) {
    if (table.buttons[i].HasPopup()) {
      bar->popups[i] = GetSubMenu(bar->content.menu.get(), table.buttons[i].popup);
    }
  }
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(bar));
  bar->font.Reset(MakeToolbarFont());
  bar->toolbar = CreateToolbar(window, bar->content, bar->font.get());
  if (!bar->toolbar) {
    DestroyWindow(window);
    return nullptr;
  }
  EnableWindow(window, IsWindowEnabled(root));
  SettleMenuBars(root);
  return window;
}

}  // namespace

HWND CreateMenuBarWindow(HWND parent, bool hidden, MenuBarContent content) noexcept {
  return CreateBar(parent, hidden, ++next_turn, std::move(content));
}

void CreateBlankBar(HWND root) noexcept {
  CreateBar(root, false, kBlank, {});
}

HWND FindMenuBarOf(HWND parent) noexcept {
  HWND found = nullptr;
  LONG turn = kBlank;
  ForEachBar([&](HWND window, MenuBar* bar) {
    if (bar->parent != parent || bar->turn <= turn) return;
    found = window;
    turn = bar->turn;
  });
  return found;
}

bool SettleMenuBars(HWND root) noexcept {
  HWND seen = nullptr;
  LONG turn = kBlank - 1;
  ForEachBar([&](HWND window, MenuBar* bar) {
    if (GetWindow(window, GW_OWNER) != root || !bar->wanted || bar->turn <= turn) return;
    if (!IsWindowVisible(bar->parent)) return;
    seen = window;
    turn = bar->turn;
  });
  const RECT place = MenuBarPlace(root);
  ForEachBar([&](HWND window, MenuBar* bar) {
    if (GetWindow(window, GW_OWNER) == root) Place(window, bar, window == seen, place);
  });
  return seen != nullptr;
}

bool OpenMenuBarAsMenu(HWND root) noexcept {
  HWND seen = nullptr;
  ForEachBar([&](HWND window, MenuBar* bar) {
    const bool has_buttons = bar->content.table.count > 0;
    if (GetWindow(window, GW_OWNER) == root && IsWindowVisible(window) && has_buttons)
      seen = window;
  });
  MenuBar* bar = seen ? BarOf(seen) : nullptr;
  if (bar) OpenAsMenu(seen, *bar);
  return bar != nullptr;
}

void EnableMenuBars(HWND root, bool enable) noexcept {
  ForEachBar([&](HWND window, MenuBar*) {
    if (GetWindow(window, GW_OWNER) == root) EnableWindow(window, enable);
  });
}

void UnregisterMenuBarClass() noexcept {
  UnregisterClassW(kClass, ThisModule());
}

}  // namespace kelvo
