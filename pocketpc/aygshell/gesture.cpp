#include "pocketpc/aygshell/gesture.h"

#include <commctrl.h>

#include <utility>

#include "base/windows/pocketpc.h"

namespace kelvo {
namespace {

constexpr DWORD kHoldMs = 700;
constexpr int kSlop = 4;  // pixels that a resting stylus may wander
constexpr UINT_PTR kHoldTimer = 0x4B01;

// The press being watched. There is one stylus.
struct Press {
  HWND control = nullptr;
  POINT at = {};  // on the screen
};
Press press;

bool IsNear(POINT a, POINT b) noexcept {
  const LONG dx = a.x - b.x;
  const LONG dy = a.y - b.y;
  return dx >= -kSlop && dx <= kSlop && dy >= -kSlop && dy <= kSlop;
}

bool IsDown(int key) noexcept {
  return GetKeyState(key) < 0;
}

bool RecognisesHolding(HWND control) noexcept {
  wchar_t name[32];
  if (!GetClassNameW(control, name, ARRAYSIZE(name))) return false;
  return lstrcmpiW(name, WC_LISTVIEWW) == 0 || lstrcmpiW(name, WC_TREEVIEWW) == 0;
}

void TellParent(HWND control, POINT at) noexcept {
  NMRGINFO told = {};
  told.hdr.hwndFrom = control;
  told.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(control));
  told.hdr.code = GN_CONTEXTMENU;
  told.ptAction = at;
  SendMessageW(GetParent(control), WM_NOTIFY, told.hdr.idFrom, reinterpret_cast<LPARAM>(&told));
}

POINT LastMessagePoint() noexcept {
  const DWORD at = GetMessagePos();
  return {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
}

void OnPressed(HWND dialog, POINT client) noexcept {
  const HWND control = ChildWindowFromPointEx(dialog, client, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
  if (!control || control == dialog || !RecognisesHolding(control)) return;
  press.control = control;
  press.at = client;
  ClientToScreen(dialog, &press.at);
  SetTimer(dialog, kHoldTimer, kHoldMs, nullptr);
}

void OnHeld(HWND dialog) noexcept {
  KillTimer(dialog, kHoldTimer);
  const HWND control = std::exchange(press.control, nullptr);
  POINT now;
  if (!control || !IsDown(VK_LBUTTON) || !GetCursorPos(&now) || !IsNear(now, press.at)) return;
  SendMessageW(control, WM_CANCELMODE, 0, 0);  // the menu will eat the release
  TellParent(control, press.at);
}

LRESULT CALLBACK GestureProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                             DWORD_PTR) noexcept {
  switch (message) {
    case WM_PARENTNOTIFY:
      if (LOWORD(wparam) == WM_LBUTTONDOWN) {
        OnPressed(dialog, {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
      }
      break;
    case WM_TIMER:
      if (wparam != kHoldTimer) break;
      OnHeld(dialog);
      return 0;
    case WM_NOTIFY: {
      const NMHDR* header = reinterpret_cast<const NMHDR*>(lparam);
      if (header->code != static_cast<UINT>(NM_RCLICK) || !RecognisesHolding(header->hwndFrom))
        break;
      TellParent(header->hwndFrom, LastMessagePoint());
      return 1;  // handled: no WM_CONTEXTMENU
    }
    case WM_NCDESTROY:
      RemoveWindowSubclass(dialog, &GestureProc, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(dialog, message, wparam, lparam);
}

// Watches the stylus until it is lifted or moved (false) or has rested long enough (true). What
// ended a tap stays in the queue for its window.
bool WaitForHold(HWND client, POINT down) noexcept {
  const DWORD start = GetTickCount();
  for (;;) {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_NOREMOVE)) {
      if (message.message != WM_MOUSEMOVE) return false;
      POINT at = message.pt;
      ScreenToClient(client, &at);
      if (!IsNear(at, down)) return false;
      PeekMessageW(&message, nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE);
    }
    const DWORD passed = GetTickCount() - start;
    if (passed >= kHoldMs) return true;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kHoldMs - passed, QS_MOUSE);
  }
}

}  // namespace

bool WatchGestures(HWND dialog) noexcept {
  return SetWindowSubclass(dialog, &GestureProc, 0, 0) != FALSE;
}

}  // namespace kelvo

DWORD WINAPI SHRecognizeGesture(SHRGINFO* info) {
  if (!info || info->cbSize != sizeof(*info) || !IsWindow(info->hwndClient)) return 0;
  const bool held =
      kelvo::IsDown(VK_RBUTTON) ||
      (kelvo::IsDown(VK_LBUTTON) && kelvo::WaitForHold(info->hwndClient, info->ptDown));
  if (!held) return 0;
  if (info->dwFlags & SHRG_NOTIFYPARENT) {
    POINT at = info->ptDown;
    ClientToScreen(info->hwndClient, &at);
    kelvo::TellParent(info->hwndClient, at);
  }
  return (info->dwFlags & SHRG_RETURNCMD) ? GN_CONTEXTMENU : 0;
}
