// Whoever uses the windows that a call opens, on the same thread: every now and then one step in
// the dialog that is open, and when the steps are over, all that is open is closed.
#pragma once

#include <windows.h>

#include <stdlib.h>

#include <atomic>
#include <functional>
#include <utility>
#include <vector>

namespace kelvo::test {

using Step = std::function<void(HWND dialog)>;
inline Step Click(int command) {
  return [=](HWND dialog) { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(command), 0); };
}
inline Step Type(int control, const wchar_t* text) {
  return [=](HWND dialog) { SetDlgItemTextW(dialog, control, text); };
}

class WindowsUser {
 public:
  // Dialogs that are open already are left alone.
  explicit WindowsUser(std::vector<Step> steps) : steps_(std::move(steps)), last_(user_) {
    EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&there_));
    static const HWND heart = StartHeart();
    static_cast<void>(heart);
    user_ = this;
  }
  ~WindowsUser() {
    user_ = last_;
    HandleMessages();
  }
  WindowsUser(const WindowsUser&) = delete;
  WindowsUser& operator=(const WindowsUser&) = delete;

  static void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

 private:
  static constexpr int kMostTicks = 20000;

  static BOOL CALLBACK Collect(HWND window, LPARAM dialogs) {
    wchar_t type[8] = L"";
    GetClassNameW(window, type, 8);
    if (wcscmp(type, L"#32770") == 0 && IsWindowVisible(window) && IsWindowEnabled(window)) {
      reinterpret_cast<std::vector<HWND>*>(dialogs)->push_back(window);
    }
    return TRUE;
  }
  // Timers would come every 10 ms.
  static HWND StartHeart() {
    static const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnBeat));
    CloseHandle(CreateThread(nullptr, 0, &Beat, window, 0, nullptr));
    return window;
  }
  static DWORD WINAPI Beat(void* window) {
    for (;; Sleep(1)) {
      if (user_ && !beaten_.exchange(true)) PostMessageW(static_cast<HWND>(window), WM_APP, 0, 0);
    }
  }
  static LRESULT CALLBACK OnBeat(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_APP) return DefWindowProcW(window, message, wparam, lparam);
    beaten_ = false;
    WindowsUser* const user = user_;
    if (user && !user->busy_) user->Tick();
    return 0;
  }
  void Tick() {
    if (++ticks_ > kMostTicks) abort();  // something stays open
    std::vector<HWND> dialogs;
    EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&dialogs));
    HWND open = nullptr;
    for (const HWND dialog : dialogs) {
      bool is_old = false;
      for (const HWND old : there_) is_old |= old == dialog;
      if (!is_old) open = dialog;
    }
    if (!open) return;
    if (next_ < steps_.size()) {
      busy_ = true;
      steps_[next_++](open);
      busy_ = false;
      return;
    }
    // One that has no button to close it takes the key.
    PostMessageW(open, ticks_ % 2 ? WM_SYSCOMMAND : WM_COMMAND, ticks_ % 2 ? SC_CLOSE : IDCANCEL,
                 0);
  }

  static inline std::atomic<WindowsUser*> user_{nullptr};
  static inline std::atomic<bool> beaten_{false};
  std::vector<Step> steps_;
  std::vector<HWND> there_;
  size_t next_ = 0;
  WindowsUser* last_;
  int ticks_ = 0;
  bool busy_ = false;
};

}  // namespace kelvo::test
