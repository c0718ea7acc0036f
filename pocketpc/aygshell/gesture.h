#pragma once

#include <windows.h>

namespace kelvo {

// Lets the list and tree views of a dialog tell it of tap-and-hold as the device's do, with
// GN_CONTEXTMENU. A right click counts as tap-and-hold; the dialog does not see it as one.
[[nodiscard]] bool WatchGestures(HWND dialog) noexcept;

}  // namespace kelvo
