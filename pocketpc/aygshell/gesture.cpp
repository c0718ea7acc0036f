#include "pocketpc/aygshell/frame.h"

#include <commctrl.h>

#include "base/windows/pocketpc.h"
#include "pocketpc/aygshell/hook.h"

namespace kelvo {
namespace {

constexpr DWORD kHoldMs = 700;
constexpr int kSlop = 4;  // pixels that a resting stylus may wander
bool IsNear(POINT a, POINT b) noexcept {
  const LONG dx = a.x - b.x;
  const LONG dy = a.y - b.y;
  return dx >= -kSlop && dx <= kSlop && dy >= -kSlop && dy <= kSlop;
}

bool IsDown(int key) noexcept {
  return GetKeyState(key) < 0;
}

bool IsOfClass(HWND control, const wchar_t* name) noexcept {
  wchar_t own[32];
  return GetClassNameW(control, own, ARRAYSIZE(own)) && lstrcmpiW(own, name) == 0;
}

bool IsTree(HWND control) noexcept {
  return IsOfClass(control, WC_TREEVIEWW);
}

bool RecognisesHolding(HWND control) noexcept {
  return IsTree(control) || IsOfClass(control, WC_LISTVIEWW);
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

// As a tap would have done.
void SelectAt(HWND control, POINT client) noexcept {
  if (IsTree(control)) {
    TVHITTESTINFO hit = {};
    hit.pt = client;
    if (TreeView_HitTest(control, &hit)) TreeView_SelectItem(control, hit.hItem);
    return;
  }
  constexpr UINT kCurrent = LVIS_SELECTED | LVIS_FOCUSED;
  LVHITTESTINFO hit = {};
  hit.pt = client;
  const int item = ListView_HitTest(control, &hit);
  if (item >= 0 && (ListView_GetItemState(control, item, LVIS_SELECTED) & LVIS_SELECTED)) return;
  ListView_SetItemState(control, -1, 0, LVIS_SELECTED);
  if (item >= 0) ListView_SetItemState(control, item, kCurrent, kCurrent);
}

// Where the keyboard is, on the screen; false when it is nowhere in sight.
bool FindFocusedItem(HWND control, POINT* at) noexcept {
  RECT item = {};
  if (IsTree(control)) {
    const HTREEITEM selected = TreeView_GetSelection(control);
    if (!selected || !TreeView_GetItemRect(control, selected, &item, TRUE)) return false;
  } else {
    const int focused = ListView_GetNextItem(control, -1, LVNI_FOCUSED);
    if (focused < 0 || !ListView_GetItemRect(control, focused, &item, LVIR_LABEL)) return false;
  }
  *at = {item.left + 2 * kSlop, (item.top + item.bottom) / 2};
  RECT client = {};
  GetClientRect(control, &client);
  return PtInRect(&client, *at) && ClientToScreen(control, at);
}

// A list or tree view.
LRESULT OnControlMessage(const HookedMessage& call) noexcept {
  if (call.message == WM_LBUTTONDOWN && IsDown(VK_LBUTTON)) {
    const HWND control = call.window;
    POINT at = {static_cast<short>(LOWORD(call.lparam)), static_cast<short>(HIWORD(call.lparam))};
    if (WaitForHold(control, at)) {
      SetFocus(control);
      SelectAt(control, at);
      ClientToScreen(control, &at);
      TellParent(control, at);
      return 0;
    }
  }
  // The key for menus holds the focused item.
  if (call.message == WM_CONTEXTMENU && call.lparam == -1) {
    POINT at = {};
    if (FindFocusedItem(call.window, &at)) TellParent(call.window, at);
    return 0;
  }
  return call.Pass();
}

LRESULT OnDialogMessage(const HookedMessage& call) noexcept {
  if (call.message == WM_NOTIFY) {
    const NMHDR* header = reinterpret_cast<const NMHDR*>(call.lparam);
    if (header->code == static_cast<UINT>(NM_RCLICK) && RecognisesHolding(header->hwndFrom)) {
      TellParent(header->hwndFrom, LastMessagePoint());
      return 1;  // handled: no WM_CONTEXTMENU
    }
    if (header->code == static_cast<UINT>(NM_CUSTOMDRAW) && IsTree(header->hwndFrom)) {
      return OnTreeDraws(*reinterpret_cast<const NMTVCUSTOMDRAW*>(call.lparam));
    }
  }
  return call.Pass();
}

}  // namespace

bool WatchGestures(HWND dialog) noexcept {
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (RecognisesHolding(child) && !Hook<&OnControlMessage>(child)) return false;
  }
  return Hook<&OnDialogMessage>(dialog);
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
