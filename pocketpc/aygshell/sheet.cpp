#include "pocketpc/aygshell/frame.h"

#include <commctrl.h>
#include <prsht.h>

#include "pocketpc/aygshell/hook.h"

namespace kelvo {
namespace {

// Dialog ids inside a property sheet.
constexpr int kTabsId = 0x3020;
constexpr int kApplyId = 0x3021;
constexpr int kHelpId = 9;
constexpr int kLineId = 0x3022;

constexpr wchar_t kFills[] = L"KelvoFillsSheet";  // property of such pages

HWND TabsOf(HWND sheet) noexcept {
  const HWND tabs = sheet ? GetDlgItem(sheet, kTabsId) : nullptr;
  wchar_t name[32];
  if (!tabs || !GetClassNameW(tabs, name, ARRAYSIZE(name))) return nullptr;
  return lstrcmpiW(name, WC_TABCONTROLW) == 0 ? tabs : nullptr;
}

// While a page is told of Done: whether it ended its sheet.
struct DoneWatch {
  bool ended = false;
};

LRESULT WatchDone(const HookedMessage& call) noexcept {
  const bool ends = call.message == PSM_PRESSBUTTON || call.message == WM_DESTROY ||
                    (call.message == WM_COMMAND &&
                     (LOWORD(call.wparam) == IDOK || LOWORD(call.wparam) == IDCANCEL));
  if (ends && call.data) reinterpret_cast<DoneWatch*>(call.data)->ended = true;
  return call.Pass();
}

LRESULT OnPageMessage(const HookedMessage& call) noexcept {
  switch (call.message) {
    case WM_WINDOWPOSCHANGING: {
      WINDOWPOS* position = reinterpret_cast<WINDOWPOS*>(call.lparam);
      const HWND sheet = GetParent(call.window);
      RECT client;
      GetClientRect(sheet, &client);
      position->x = 0;
      position->y = 0;
      position->cx = client.right;
      position->cy = client.bottom;
      position->hwndInsertAfter = TabsOf(sheet);  // the tabs stay above
      position->flags &= ~static_cast<UINT>(SWP_NOMOVE | SWP_NOSIZE);
      break;
    }
    case WM_NCDESTROY:
      RemovePropW(call.window, kFills);
      break;
    default:
      break;
  }
  return call.Pass();
}

bool IsPageKey(WPARAM key) noexcept {
  return key == VK_TAB && GetKeyState(VK_CONTROL) < 0;
}

// Shows the page that comes after the current one, or before it, round the sheet's end.
void TurnPage(HWND sheet, bool forward) noexcept {
  const HWND tabs = TabsOf(sheet);
  const LRESULT count = SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0);
  const LRESULT page = SendMessageW(tabs, TCM_GETCURSEL, 0, 0);
  const LRESULT next = (page + (forward ? 1 : count - 1)) % count;
  SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(next), 0);
  const HWND shown = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
  SetFocus(GetNextDlgTabItem(shown, nullptr, FALSE));
}

// A control of a page: Ctrl+Tab is the sheet's.
LRESULT OnPageKey(const HookedMessage& call) noexcept {
  switch (call.message) {
    case WM_GETDLGCODE:
      if (!IsPageKey(call.wparam)) break;
      return call.Pass() | DLGC_WANTMESSAGE;
    case WM_KEYDOWN:
      if (!IsPageKey(call.wparam)) break;
      TurnPage(GetAncestor(call.window, GA_ROOT), GetKeyState(VK_SHIFT) >= 0);
      return 0;
    default:
      break;
  }
  return call.Pass();
}

bool FillsSheet(HWND window) noexcept {
  return GetPropW(window, kFills) != nullptr;
}

// Lays the row out anew; the right end of its last tab.
LONG PadTabs(HWND tabs, LONG width, int padding, LRESULT count) noexcept {
  SendMessageW(tabs, TCM_SETPADDING, 0, MAKELPARAM(padding, 3));
  SendMessageW(tabs, WM_SIZE, SIZE_RESTORED, MAKELPARAM(width, kTabRowHeight));
  RECT last = {};
  SendMessageW(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(count - 1),
               reinterpret_cast<LPARAM>(&last));
  return last.right;
}

// The control has arrows to scroll its row while it takes the row for wider than itself.
bool HasArrows(HWND tabs) noexcept {
  const HWND arrows = FindWindowExW(tabs, nullptr, UPDOWN_CLASSW, nullptr);
  return arrows && (GetWindowLongPtrW(arrows, GWL_STYLE) & WS_VISIBLE) != 0;
}

// One row; as much room around the texts as lets all of them be seen. A row that is too wide is
// scrolled, and the places of its tabs say nothing about their widths: so the narrowest comes
// first.
void FitTabs(HWND tabs, const RECT& client) noexcept {
  constexpr LONG kWidestPadding = 6;
  const LONG_PTR style = GetWindowLongPtrW(tabs, GWL_STYLE);
  SetWindowLongPtrW(tabs, GWL_STYLE, style & ~static_cast<LONG_PTR>(TCS_MULTILINE));
  const LRESULT count = SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0);
  if (count <= 0) return;
  const LONG room = client.right - PadTabs(tabs, client.right, 0, count);
  LONG padding = room / (2 * static_cast<LONG>(count));  // on both sides of each text
  if (padding > kWidestPadding) padding = kWidestPadding;
  // The control wants some pixels for itself.
  for (; padding > 0; --padding) {
    PadTabs(tabs, client.right, padding, count);
    if (!HasArrows(tabs)) return;
  }
  PadTabs(tabs, client.right, 0, count);
}

void PlaceTabs(HWND tabs, const RECT& client) noexcept {
  const bool at_bottom = (GetWindowLongPtrW(tabs, GWL_STYLE) & TCS_BOTTOM) != 0;
  SetWindowPos(tabs, HWND_TOP, 0, at_bottom ? client.bottom - kTabRowHeight : 0, client.right,
               kTabRowHeight, SWP_NOACTIVATE);
  FitTabs(tabs, client);
}

}  // namespace

HWND SheetOfPage(HWND page) noexcept {
  // Not GetParent, which is the owner for a dialog that was opened from a page.
  const HWND sheet = GetAncestor(page, GA_PARENT);
  return TabsOf(sheet) ? sheet : nullptr;
}

bool FillSheet(HWND page) noexcept {
  const HWND sheet = GetParent(page);
  constexpr int kUnwanted[] = {IDOK, IDCANCEL, kApplyId, kHelpId, kLineId};
  for (const int id : kUnwanted) {
    const HWND control = GetDlgItem(sheet, id);
    if (control) ShowWindow(control, SW_HIDE);
  }
  const LONG_PTR style = GetWindowLongPtrW(page, GWL_STYLE);
  SetWindowLongPtrW(page, GWL_STYLE, style | WS_CLIPSIBLINGS);
  if (!Hook<&OnPageMessage>(page) || !SetPropW(page, kFills, page)) return false;
  for (HWND child = GetWindow(page, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!Hook<&OnPageKey>(child)) return false;
  }
  LayOutSheet(sheet);
  return true;
}

void LayOutSheet(HWND root) noexcept {
  const HWND tabs = TabsOf(root);
  if (!tabs) return;
  RECT client;
  GetClientRect(root, &client);
  PlaceTabs(tabs, client);
  for (HWND child = GetWindow(root, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    // The page's own subclass puts in the numbers.
    if (FillsSheet(child)) SetWindowPos(child, nullptr, 0, 0, 0, 0, SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

bool SheetTakesDone(HWND root) noexcept {
  if (!TabsOf(root)) return false;
  const HWND page = reinterpret_cast<HWND>(SendMessageW(root, PSM_GETCURRENTPAGEHWND, 0, 0));
  DoneWatch watch;
  if (page && Hook<&WatchDone>(root, reinterpret_cast<DWORD_PTR>(&watch))) {
    SendMessageW(page, WM_COMMAND, IDOK, 0);
    Unhook<&WatchDone>(root);
  }
  if (!watch.ended && IsWindow(root)) PostMessageW(root, WM_COMMAND, IDOK, 0);
  return true;
}

}  // namespace kelvo
