// Counts the end-of-playback messages that a plug-in posts: with a message window under Windows,
// with the post hook natively.
#pragma once

#include <gtest/gtest.h>

#include <atomic>

#include "base/sync/thread.h"
#include "kelvo/messages.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace kelvo::test {

class EndMessages {
 public:
#ifdef _WIN32
  EndMessages()
      : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                GetModuleHandleW(nullptr), nullptr)) {
    count_ = 0;
  }
  ~EndMessages() {
    DestroyWindow(static_cast<HWND>(window_));
  }
#else
  EndMessages() : window_(&count_) {
    count_ = 0;
    SetPostHook(&Receive);
  }
  ~EndMessages() {
    SetPostHook(nullptr);
  }
#endif
  EndMessages(const EndMessages&) = delete;
  EndMessages& operator=(const EndMessages&) = delete;

  void* window() const {
    return window_;
  }
  // Takes one message, waiting for it as long as it needs (the test's time limit is the bound).
  void WaitForNext() {
    while (count() == 0) SleepMs(1);
    --count_;
  }
  // How many have arrived and have not been taken.
  int count() const {
#ifdef _WIN32
    MSG message;
    while (PeekMessageW(&message, static_cast<HWND>(window_), 0, 0, PM_REMOVE)) {
      if (message.message == kMessageEndOfPlayback)
        Receive(window_, message.message, message.wParam, message.lParam);
    }
#endif
    return count_;
  }
  void Clear() {
    static_cast<void>(count());
    count_ = 0;
  }

 private:
  static void Receive(void*, uint32_t message, uintptr_t wparam, intptr_t lparam) {
    EXPECT_EQ(message, kMessageEndOfPlayback);
    EXPECT_TRUE(wparam == 0 && lparam == 0);
    ++count_;
  }

  void* window_;
  static inline std::atomic<int> count_;
};

}  // namespace kelvo::test
