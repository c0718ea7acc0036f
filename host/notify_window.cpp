#include "host/notify_window.h"

#include <kelvo/messages.h>

#include "host/console.h"

namespace velmora {

NotifyWindow::NotifyWindow()
    : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              GetModuleHandleW(nullptr), nullptr)) {}

NotifyWindow::~NotifyWindow() {
  DestroyWindow(window_);
}

enum Wait NotifyWindow::Wait(DWORD milliseconds) const {
  const DWORD start = GetTickCount();
  for (;;) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.hwnd == window_ && message.message == kelvo::kMessageEndOfPlayback) {
        return velmora::Wait::kEndOfPlayback;
      }
      DispatchMessageW(&message);
    }
    const DWORD passed = GetTickCount() - start;
    if (passed >= milliseconds) return velmora::Wait::kTimeout;
    const HANDLE interrupt = InterruptEvent();
    if (MsgWaitForMultipleObjects(1, &interrupt, FALSE, milliseconds - passed, QS_ALLINPUT) ==
        WAIT_OBJECT_0) {
      return velmora::Wait::kInterrupted;
    }
  }
}

}  // namespace velmora
