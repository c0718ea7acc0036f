// Window procedures in front of a window's own. (The common controls' own way asks the window
// server several times for each message, which a list of thousands makes felt.)
#pragma once

#include <windows.h>

namespace kelvo {

// A message on its way to a window.
struct HookedMessage {
  HWND window;
  UINT message;
  WPARAM wparam;
  LPARAM lparam;
  DWORD_PTR data;  // of the hook; 0 when it was taken off meanwhile
  WNDPROC below;
  LRESULT Pass() const noexcept { return CallWindowProcW(below, window, message, wparam, lparam); }
};
using HookProcedure = LRESULT (*)(const HookedMessage& call) noexcept;

LRESULT RunHook(HookProcedure procedure, WNDPROC front, HookedMessage call) noexcept;
[[nodiscard]] bool InsertHook(HWND window, WNDPROC front, DWORD_PTR data) noexcept;
void RemoveHook(HWND window, WNDPROC front) noexcept;

template <HookProcedure kProcedure>
LRESULT CALLBACK HookFront(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  return RunHook(kProcedure, &HookFront<kProcedure>, {window, message, wparam, lparam, 0, nullptr});
}

// Ends with the window. Doing it twice only changes the data. False when memory is out.
template <HookProcedure kProcedure>
[[nodiscard]] bool Hook(HWND window, DWORD_PTR data = 0) noexcept {
  return InsertHook(window, &HookFront<kProcedure>, data);
}

template <HookProcedure kProcedure>
void Unhook(HWND window) noexcept {
  RemoveHook(window, &HookFront<kProcedure>);
}

}  // namespace kelvo
