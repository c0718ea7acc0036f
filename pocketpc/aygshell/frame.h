// The top-level windows of this shell: the strip below their client area where menu bars lie, their
// size and their Done button. All state is kept on the window, so it ends with the window.
// UI thread only.
#pragma once

#include <windows.h>

namespace kelvo {

// Gives `root` its strip: 26 pixels at the bottom that no longer belong to the client area. False
// when the window cannot be subclassed. Doing it twice is harmless.
[[nodiscard]] bool MakeFrame(HWND root) noexcept;

// Lets the frame cover the screen: over its owner, client area as WorkAreaSize() says, caption with
// the title.
void FillScreen(HWND root) noexcept;

// With Done the caption has a close button that acts as Done, without it there is none.
void SetDone(HWND root, bool has_done) noexcept;

// The strip on the screen.
RECT StripOf(HWND root) noexcept;

}  // namespace kelvo
