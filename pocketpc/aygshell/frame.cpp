#include "pocketpc/aygshell/frame.h"

#include <commctrl.h>

#include "pocketpc/aygshell/hook.h"
#include "pocketpc/aygshell/menu_bar.h"

namespace kelvo {
namespace {

// A window property, there when the window has a Done button.
constexpr wchar_t kHasDone[] = L"KelvoDone";
// The same for a window that covers the screen.
constexpr wchar_t kFillsScreen[] = L"KelvoFillsScreen";

LRESULT OnFrameMessage(const HookedMessage& call) noexcept {
  const HWND root = call.window;
  switch (call.message) {
    case WM_WINDOWPOSCHANGED: {
      const LRESULT result = call.Pass();
      const UINT flags = reinterpret_cast<const WINDOWPOS*>(call.lparam)->flags;
      if (!(flags & SWP_NOSIZE) || (flags & SWP_SHOWWINDOW)) LayOutSheet(root);
      if (!SettleMenuBars(root) && (flags & SWP_SHOWWINDOW) && GetPropW(root, kFillsScreen)) {
        CreateBlankBar(root);
      }
      return result;
    }
    case WM_GETMINMAXINFO:
      if (!GetPropW(root, kFillsScreen)) break;
      reinterpret_cast<MINMAXINFO*>(call.lparam)->ptMinTrackSize = {0, 0};  // small screens, too
      return 0;
    case WM_ENABLE:
      EnableMenuBars(root, call.wparam != FALSE);
      break;
    case WM_SYSCOMMAND:
      // Alt or F10 alone. The bar has no focus: its commands become a menu.
      if ((call.wparam & 0xFFF0) == SC_KEYMENU && call.lparam == 0 && OpenMenuBarAsMenu(root)) {
        return 0;
      }
      if ((call.wparam & 0xFFF0) != SC_CLOSE) break;
      if (!GetPropW(root, kHasDone)) return 0;
      if (!SheetTakesDone(root)) PostMessageW(root, WM_COMMAND, IDOK, 0);
      return 0;
    case WM_NCDESTROY:
      RemovePropW(root, kHasDone);
      RemovePropW(root, kFillsScreen);
      break;
    default:
      break;
  }
  return call.Pass();
}

// The nearest position to `at` that keeps the window on its monitor.
POINT KeepOnMonitor(POINT at, SIZE window) noexcept {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof(monitor);
  if (!GetMonitorInfoW(MonitorFromPoint(at, MONITOR_DEFAULTTONEAREST), &monitor)) return at;
  const RECT& work = monitor.rcWork;
  if (at.x > work.right - window.cx) at.x = work.right - window.cx;
  if (at.y > work.bottom - window.cy) at.y = work.bottom - window.cy;
  if (at.x < work.left) at.x = work.left;
  if (at.y < work.top) at.y = work.top;
  return at;
}

}  // namespace

bool MakeFrame(HWND root) noexcept {
  return Hook<&OnFrameMessage>(root);
}

void FillScreen(HWND root, bool may_grow) noexcept {
  // Each page of a sheet asks when it is first shown: the user may have moved the sheet since.
  if (GetPropW(root, kFillsScreen)) return;
  // Not to a whole screen in any case: the menu bar lies under it.
  constexpr DWORD kResizable = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  DWORD style = static_cast<DWORD>(GetWindowLongPtrW(root, GWL_STYLE));
  style = (style & ~kResizable) | WS_CAPTION | (may_grow ? WS_THICKFRAME : 0);
  SetWindowLongPtrW(root, GWL_STYLE, static_cast<LONG_PTR>(style));
  DWORD ex_style = static_cast<DWORD>(GetWindowLongPtrW(root, GWL_EXSTYLE));
  ex_style &= ~static_cast<DWORD>(WS_EX_CONTEXTHELP | WS_EX_TOOLWINDOW);
  ex_style |= WS_EX_DLGMODALFRAME;  // no icon before the title
  SetWindowLongPtrW(root, GWL_EXSTYLE, static_cast<LONG_PTR>(ex_style));

  SetPropW(root, kFillsScreen, root);
  const SIZE client = WorkAreaSize();
  RECT window = {0, 0, client.cx, client.cy};
  AdjustWindowRectEx(&window, style, FALSE, ex_style);
  const SIZE size = {window.right - window.left, window.bottom - window.top};
  const HWND owner = GetWindow(root, GW_OWNER);
  RECT place = {};
  GetWindowRect(owner && IsWindowVisible(owner) ? owner : root, &place);
  const POINT at = KeepOnMonitor({place.left, place.top}, {size.cx, size.cy + kMenuBarHeight});
  SetWindowPos(root, nullptr, at.x, at.y, size.cx, size.cy,
               SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool SetDone(HWND root, bool has_done) noexcept {
  LONG_PTR style = GetWindowLongPtrW(root, GWL_STYLE);
  if (has_done) {
    if (!SetPropW(root, kHasDone, root)) return false;
    style |= WS_SYSMENU;
  } else {
    RemovePropW(root, kHasDone);
    style &= ~static_cast<LONG_PTR>(WS_SYSMENU);
  }
  SetWindowLongPtrW(root, GWL_STYLE, style);
  SetWindowPos(root, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

RECT MenuBarPlace(HWND root) noexcept {
  RECT place = {};
  GetWindowRect(root, &place);
  place.top = place.bottom;
  place.bottom += kMenuBarHeight;
  return place;
}

}  // namespace kelvo
