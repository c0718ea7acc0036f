#pragma once

#include <windows.h>

#include <unknwn.h>

namespace kelvo {

// Registers "AtlAxWin" for all modules of the process; also true when it is there already. A window
// of the class makes the control that its text names while it is created, on the creating thread,
// which must be in an apartment; creation fails when the control cannot be made. An empty text
// gives an empty container. The control is closed with its window.
bool RegisterContainerWindow() noexcept;
// Before the module goes: a later one of the same name may lie elsewhere.
void UnregisterContainerWindow() noexcept;

// The control of a container window, with a reference for the caller; E_FAIL for other windows and
// for empty containers.
HRESULT ContainedControl(HWND window, IUnknown** control) noexcept;

}  // namespace kelvo
