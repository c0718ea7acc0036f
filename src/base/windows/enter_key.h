// Enter in lists and trees. A dialog takes the key for its default button, and without one for its
// Done button: it would close.
#pragma once

#include <windows.h>

namespace kelvo {

// What the procedure of a list or tree adds to the control's answer to WM_GETDLGCODE: Enter is the
// control's. Not every system names the key in both parameters.
inline LRESULT EnterCode(WPARAM wparam, LPARAM lparam) noexcept {
  const MSG* const about = reinterpret_cast<const MSG*>(lparam);
  const bool is_enter = wparam == VK_RETURN || (about && about->wParam == VK_RETURN);
  return is_enter ? DLGC_WANTMESSAGE : 0;
}

// Leaves Enter to a list or tree that has no procedure of the library's, until it is destroyed.
// Uses the window's GWLP_USERDATA.
void LeaveEnterTo(HWND control) noexcept;

}  // namespace kelvo
