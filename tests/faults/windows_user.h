// Whoever uses the windows that a call opens, on the same thread: at every tick of a timer one
// step, and when the steps are over, all that is open is closed.
#pragma once

#include <windows.h>

#include <prsht.h>
#include <stdlib.h>

#include <vector>

namespace kelvo::test {

struct Step {
  int page;  // of a sheet; -1: of any dialog
  int command;
};

class WindowsUser {
 public:
  explicit WindowsUser(std::vector<Step> steps) : steps_(std::move(steps)) {
    user_ = this;
    timer_ = SetTimer(nullptr, 0, 1, &OnTimer);
  }
  ~WindowsUser() {
    KillTimer(nullptr, timer_);
    user_ = nullptr;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  WindowsUser(const WindowsUser&) = delete;
  WindowsUser& operator=(const WindowsUser&) = delete;

 private:
  static constexpr int kMostTicks = 5000;

  static BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    wchar_t type[8] = L"";
    GetClassNameW(window, type, 8);
    if (wcscmp(type, L"#32770") == 0 && IsWindowVisible(window) && IsWindowEnabled(window)) {
      *reinterpret_cast<HWND*>(found) = window;
    }
    return TRUE;
  }
  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (user_ && !user_->busy_) user_->Tick();
  }
  // One that has no button to close it takes the key.
  void Close(HWND dialog) {
    PostMessageW(dialog, ticks_ % 2 ? WM_SYSCOMMAND : WM_COMMAND, ticks_ % 2 ? SC_CLOSE : IDCANCEL,
                 0);
  }
  void Tick() {
    if (++ticks_ > kMostTicks) abort();  // something stays open
    EndMenu();
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (!dialog) return;
    if (!first_) first_ = dialog;
    if (dialog != first_) {
      // What a step has opened: agreed to, then declined.
      const WPARAM answers[] = {IDOK, IDYES, IDNO};
      if (ticks_ % 4 == 3) Close(dialog);
      PostMessageW(dialog, WM_COMMAND, answers[ticks_ % 3], 0);
      return;
    }
    if (next_ == steps_.size()) {
      Close(dialog);
      return;
    }
    const Step step = steps_[next_++];
    busy_ = true;
    if (step.page >= 0) SendMessageW(dialog, PSM_SETCURSEL, static_cast<WPARAM>(step.page), 0);
    const auto page = reinterpret_cast<HWND>(
        step.page < 0 ? 0 : SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0));
    busy_ = false;
    if (step.command) {
      PostMessageW(page ? page : dialog, WM_COMMAND, static_cast<WPARAM>(step.command), 0);
    }
  }

  static inline WindowsUser* user_ = nullptr;
  std::vector<Step> steps_;
  size_t next_ = 0;
  UINT_PTR timer_;
  HWND first_ = nullptr;
  int ticks_ = 0;
  bool busy_ = false;
};

}  // namespace kelvo::test
