// Property sheets. When a page asks for the full screen, its sheet becomes what sheets are on the
// device: no push buttons, the pages over the whole client area, the row of tabs on their edge.
// UI thread only.
#pragma once

#include <windows.h>

namespace kelvo {

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

}  // namespace kelvo
