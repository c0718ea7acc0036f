// The toolbar inside a menu bar.
#pragma once

#include <windows.h>

#include "pocketpc/aygshell/menu_bar.h"

namespace kelvo {

constexpr int kToolbarTop = 1;  // under the bar's upper line

HFONT MakeToolbarFont() noexcept;

// Borrows the images and the font. Null when there is no window or no button to be had.
HWND CreateToolbar(HWND bar, const MenuBarContent& content, HFONT font) noexcept;

}  // namespace kelvo
