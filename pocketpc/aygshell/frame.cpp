#include "pocketpc/aygshell/frame.h"

#include <commctrl.h>

#include "pocketpc/aygshell/menu_bar.h"
#include "pocketpc/aygshell/screen.h"
#include "pocketpc/aygshell/sheet.h"

namespace kelvo {
namespace {

// Bits of a window property.
constexpr wchar_t kProperty[] = L"KelvoFrame";
constexpr DWORD_PTR kHasStrip = 1;
constexpr DWORD_PTR kHasDone = 2;

DWORD_PTR BitsOf(HWND root) noexcept {
  return reinterpret_cast<DWORD_PTR>(GetPropW(root, kProperty));
}

int StripHeight(int window_height) noexcept {
  return window_height < kMenuBarHeight ? window_height : kMenuBarHeight;
}

// Seen only where no menu bar lies.
void PaintStrip(HWND root) noexcept {
  const HDC dc = GetWindowDC(root);
  if (!dc) return;
  RECT window;
  GetWindowRect(root, &window);
  RECT strip = StripOf(root);
  OffsetRect(&strip, -window.left, -window.top);
  FillRect(dc, &strip, GetSysColorBrush(COLOR_BTNFACE));
  strip.bottom = strip.top + 1;
  FillRect(dc, &strip, GetSysColorBrush(COLOR_BTNSHADOW));
  ReleaseDC(root, dc);
}

LRESULT CALLBACK FrameProc(HWND root, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                           DWORD_PTR) noexcept {
  switch (message) {
    case WM_NCCALCSIZE: {
      const LRESULT result = DefSubclassProc(root, message, wparam, lparam);
      if (!(BitsOf(root) & kHasStrip)) return result;
      // Either parameter block starts with the rectangle.
      RECT* client = reinterpret_cast<RECT*>(lparam);
      client->bottom -= StripHeight(client->bottom - client->top);
      return result;
    }
    case WM_NCPAINT: {
      const LRESULT result = DefSubclassProc(root, message, wparam, lparam);
      if (BitsOf(root) & kHasStrip) PaintStrip(root);
      return result;
    }
    case WM_WINDOWPOSCHANGED: {
      const LRESULT result = DefSubclassProc(root, message, wparam, lparam);
      const UINT flags = reinterpret_cast<const WINDOWPOS*>(lparam)->flags;
      if (!(flags & SWP_NOSIZE) || (flags & SWP_SHOWWINDOW)) LayOutSheet(root);
      SettleMenuBars(root);
      return result;
    }
    case WM_ENABLE:
      EnableMenuBars(root, wparam != FALSE);
      break;
    case WM_SYSCOMMAND:
      if ((wparam & 0xFFF0) != SC_CLOSE) break;
      if (!(BitsOf(root) & kHasDone)) return 0;
      if (!SheetTakesDone(root)) PostMessageW(root, WM_COMMAND, IDOK, 0);
      return 0;
    case WM_NCDESTROY:
      RemovePropW(root, kProperty);
      RemoveWindowSubclass(root, &FrameProc, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(root, message, wparam, lparam);
}

bool SetBits(HWND root, DWORD_PTR clear, DWORD_PTR set) noexcept {
  const DWORD_PTR bits = (BitsOf(root) & ~clear) | set;
  return SetWindowSubclass(root, &FrameProc, 0, 0) &&
         SetPropW(root, kProperty, reinterpret_cast<HANDLE>(bits));
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
  if (BitsOf(root) & kHasStrip) return true;
  if (!SetBits(root, 0, kHasStrip)) return false;
  SetWindowPos(root, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

void FillScreen(HWND root) noexcept {
  constexpr DWORD kResizable = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  DWORD style = static_cast<DWORD>(GetWindowLongPtrW(root, GWL_STYLE));
  style = (style & ~kResizable) | WS_CAPTION;
  SetWindowLongPtrW(root, GWL_STYLE, static_cast<LONG_PTR>(style));
  DWORD ex_style = static_cast<DWORD>(GetWindowLongPtrW(root, GWL_EXSTYLE));
  ex_style &= ~static_cast<DWORD>(WS_EX_CONTEXTHELP | WS_EX_TOOLWINDOW);
  SetWindowLongPtrW(root, GWL_EXSTYLE, static_cast<LONG_PTR>(ex_style));

  const SIZE client = WorkAreaSize();
  RECT window = {0, 0, client.cx, client.cy + kMenuBarHeight};
  AdjustWindowRectEx(&window, style, FALSE, ex_style);
  const SIZE size = {window.right - window.left, window.bottom - window.top};
  const HWND owner = GetWindow(root, GW_OWNER);
  RECT place = {};
  GetWindowRect(owner && IsWindowVisible(owner) ? owner : root, &place);
  const POINT at = KeepOnMonitor({place.left, place.top}, size);
  SetWindowPos(root, nullptr, at.x, at.y, size.cx, size.cy,
               SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetDone(HWND root, bool has_done) noexcept {
  if (!SetBits(root, kHasDone, has_done ? kHasDone : 0)) return;
  const LONG_PTR style = GetWindowLongPtrW(root, GWL_STYLE);
  const LONG_PTR wanted =
      has_done ? style | WS_SYSMENU : style & ~static_cast<LONG_PTR>(WS_SYSMENU);
  SetWindowLongPtrW(root, GWL_STYLE, wanted);
  SetWindowPos(root, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT StripOf(HWND root) noexcept {
  RECT strip = {};
  GetClientRect(root, &strip);
  MapWindowPoints(root, nullptr, reinterpret_cast<POINT*>(&strip), 2);
  strip.top = strip.bottom;
  strip.bottom += kMenuBarHeight;
  return strip;
}

}  // namespace kelvo
