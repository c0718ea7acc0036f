#pragma once

#include <windows.h>

namespace kelvo {

// Heights in pixels of the device's bars. The top bar shows a window's title and its Done button:
// on the desktop the window's caption is in its place, whatever height that has.
constexpr int kTopBarHeight = 26;
constexpr int kMenuBarHeight = 26;

// The device's screen: KELVO_SCREEN=WxH, from 100x100 to 4096x4096; 240x320 when it is not set or
// is something else.
SIZE ScreenSize() noexcept;

// What both bars leave of it.
SIZE WorkAreaSize() noexcept;

}  // namespace kelvo
