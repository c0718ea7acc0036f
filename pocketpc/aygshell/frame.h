// The top-level windows of this shell: their size, their Done button, and the place right under
// them where their menu bars lie. All state is kept on the window, so it ends with the window. UI
// thread only.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace kelvo {

// From now on menu bars follow the window, and closing it by its caption is Done. False when the
// window cannot be subclassed. Doing it twice is harmless.
[[nodiscard]] bool MakeFrame(HWND root) noexcept;

// Lets the frame and its menu bar cover the screen: over its owner, client area as WorkAreaSize()
// says, caption with the title. Nothing when that was done before.
// The user may enlarge it if `may_grow`.
void FillScreen(HWND root, bool may_grow) noexcept;

// With Done the caption has a close button that acts as Done, without it there is none.
[[nodiscard]] bool SetDone(HWND root, bool has_done) noexcept;

// On the screen.
RECT MenuBarPlace(HWND root) noexcept;

// Heights in pixels of the device's bars. The top bar shows a window's title and its Done button:
// on the desktop the window's caption is in its place, whatever height that has.
constexpr int kTopBarHeight = 26;
constexpr int kMenuBarHeight = 26;

// The device's screen: KELVO_SCREEN=WxH, from 100x100 to 4096x4096; 240x320 when it is not set or
// is something else.
SIZE ScreenSize() noexcept;

// What both bars leave of it.
SIZE WorkAreaSize() noexcept;

// Property sheets. When a page asks for the full screen, its sheet becomes what sheets are on the
// device: no push buttons, the pages over the whole client area, the row of tabs on their edge.
// UI thread only.

// The height in pixels of the row of tabs; it covers that much of each page.
constexpr int kTabRowHeight = 21;

// The property sheet that `page` is a page of, or null.
HWND SheetOfPage(HWND page) noexcept;

// Makes the page fill its sheet from now on, whatever the sheet wants. Ctrl+Tab turns pages.
[[nodiscard]] bool FillSheet(HWND page) noexcept;

// Brings tabs and pages to the sheet's size. Nothing for other windows.
void LayOutSheet(HWND root) noexcept;

// Done goes to the sheet's active page as command 1; when that neither ended the sheet nor asked it
// to, the sheet is ended as with OK. False when `root` is no property sheet.
bool SheetTakesDone(HWND root) noexcept;

// Lets the list and tree views of a dialog tell it of tap-and-hold as the device's do, with
// GN_CONTEXTMENU, and keep Enter for themselves. A right click counts as tap-and-hold; the dialog
// does not see it as one.
[[nodiscard]] bool WatchGestures(HWND dialog) noexcept;

// The desktop's tree view cuts its labels where their widths end, but some letters of the device's
// small font are drawn beyond: "Unknown" lost a part of its last letter. What a tree asks while it
// draws itself; draws what is missing of a label. The answer.
LRESULT OnTreeDraws(const NMTVCUSTOMDRAW& draw) noexcept;

}  // namespace kelvo
