#include "host/host_window.h"

#include <kelvo/messages.h>

namespace velmora {

HostWindow::HostWindow() {
  WNDCLASSW type = {};
  type.lpfnWndProc = Procedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = L"VelmoraHost";
  type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  RegisterClassW(&type);
  window_ = CreateWindowExW(0, type.lpszClassName, L"Velmora", WS_POPUP | WS_CAPTION | WS_VISIBLE,
                            0, 0, 240, 294, nullptr, nullptr, type.hInstance, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HostWindow::~HostWindow() {
  DestroyWindow(window_);
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kelvo::kMessagePlayBookmark) {
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    self->requests_.push_back({wparam == kelvo::kBookmarkPlay, static_cast<int>(lparam)});
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace velmora
