// The top-level windows of this shell: their size, their Done button, and the place right under
// them where their menu bars lie. All state is kept on the window, so it ends with the window. UI
// thread only.
#pragma once

#include <windows.h>

namespace kelvo {

// From now on menu bars follow the window, and closing it by its caption is Done. False when the
// window cannot be subclassed. Doing it twice is harmless.
[[nodiscard]] bool MakeFrame(HWND root) noexcept;

// Lets the frame and its menu bar cover the screen: over its owner, client area as WorkAreaSize()
// says, caption with the title. Nothing when that was done before.
void FillScreen(HWND root) noexcept;

// With Done the caption has a close button that acts as Done, without it there is none.
[[nodiscard]] bool SetDone(HWND root, bool has_done) noexcept;

// On the screen.
RECT MenuBarPlace(HWND root) noexcept;

}  // namespace kelvo
