#include <gtest/gtest.h>
#include <windows.h>

#include "kelvo/messages.h"
#include "tests/support/end_messages.h"

namespace kelvo::test {

EndMessages::EndMessages()
    : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              GetModuleHandleW(nullptr), nullptr)) {}
EndMessages::~EndMessages() {
  DestroyWindow(static_cast<HWND>(window_));
}

void EndMessages::WaitForNext() {
  MSG message;
  while (GetMessageW(&message, static_cast<HWND>(window_), 0, 0) > 0) {
    if (message.message != kMessageEndOfPlayback) continue;
    EXPECT_TRUE(message.wParam == 0 && message.lParam == 0);
    return;
  }
}

int EndMessages::count() {
  // Messages cannot be counted in the queue: they are taken out and put back.
  MSG message;
  int count = 0;
  while (PeekMessageW(&message, static_cast<HWND>(window_), kMessageEndOfPlayback,
                      kMessageEndOfPlayback, PM_REMOVE)) {
    ++count;
  }
  for (int i = 0; i < count; ++i) {
    PostMessageW(static_cast<HWND>(window_), kMessageEndOfPlayback, 0, 0);
  }
  return count;
}

void EndMessages::Clear() {
  MSG message;
  while (PeekMessageW(&message, static_cast<HWND>(window_), 0, 0, PM_REMOVE)) {
  }
}

}  // namespace kelvo::test
