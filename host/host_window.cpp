#include "host/host_window.h"

namespace velmora {

HostWindow::HostWindow()
    : window_(CreateWindowExW(0, L"STATIC", L"Velmora", WS_POPUP | WS_CAPTION | WS_VISIBLE, 0, 0,
                              240, 294, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {}

HostWindow::~HostWindow() {
  DestroyWindow(window_);
}

}  // namespace velmora
