// Plays the user of a modal dialog: a second thread waits for a window with the given title and
// then does what the test says.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>

#include "tests/support/wide_text.h"

namespace kelvo::test {

class DialogDriver {
 public:
  DialogDriver(const wchar_t* title, std::function<void(HWND)> act)
      : thread_([title = std::wstring(title), act = std::move(act)] {
          HWND window = nullptr;
          // The test's own time limit is the bound.
          while (!(window = FindOwn(title.c_str())) || !IsWindowVisible(window)) {
            Sleep(10);
          }
          act(window);
        }) {}
  ~DialogDriver() { thread_.join(); }

 private:
  // Another test on the same display may show a window of this title at the same time.
  static HWND FindOwn(const wchar_t* title) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, nullptr, title)) != nullptr) {
      DWORD process = 0;
      GetWindowThreadProcessId(window, &process);
      if (process == GetCurrentProcessId()) break;
    }
    return window;
  }

  std::thread thread_;
};

// Answers a message box with OK, and has what it says when this is gone.
class BoxAnswer : public DialogDriver {
 public:
  BoxAnswer(const wchar_t* title, std::string* text)
      : DialogDriver(title, [text](HWND box) {
          wchar_t said[400] = L"";
          GetDlgItemTextW(box, 0xFFFF, said, 400);
          *text = Utf8(said);
          PostMessageW(box, WM_COMMAND, IDOK, 0);
        }) {}
};

}  // namespace kelvo::test
