// The toolbar inside a menu bar.
#pragma once

#include <windows.h>

#include "pocketpc/aygshell/menu_bar.h"

namespace kelvo {

HFONT MakeToolbarFont() noexcept;

// Borrows the images and the font. Null when there is no window or no button to be had.
HWND CreateToolbar(HWND bar, const MenuBarContent& content, HFONT font) noexcept;

// Inside the bar's edges.
void PlaceToolbar(HWND toolbar) noexcept;

}  // namespace kelvo
