#include "base/windows/enter_key.h"

namespace kelvo {
namespace {

LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  const LONG_PTR own = GetWindowLongPtrW(control, GWLP_USERDATA);
  // Unless somebody has put a procedure in front of this one and goes on calling it.
  if (message == WM_DESTROY &&
      GetWindowLongPtrW(control, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&Procedure)) {
    SetWindowLongPtrW(control, GWLP_WNDPROC, own);
  }
  const LRESULT result =
      CallWindowProcW(reinterpret_cast<WNDPROC>(own), control, message, wparam, lparam);
  return message == WM_GETDLGCODE ? result | EnterCode(wparam, lparam) : result;
}

}  // namespace

void LeaveEnterTo(HWND control) noexcept {
  SetWindowLongPtrW(control, GWLP_USERDATA, GetWindowLongPtrW(control, GWLP_WNDPROC));
  SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
}

}  // namespace kelvo
