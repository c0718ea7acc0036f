// Plays the user of a modal dialog: a second thread waits for a window with the given title and
// then does what the test says.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>

namespace kelvo::test {

class DialogDriver {
 public:
  DialogDriver(const wchar_t* title, std::function<void(HWND)> act)
      : thread_([title = std::wstring(title), act = std::move(act)] {
          HWND window = nullptr;
          // The test's own time limit is the bound.
          while (!(window = FindWindowW(nullptr, title.c_str())) || !IsWindowVisible(window)) {
            Sleep(10);
          }
          act(window);
        }) {}
  ~DialogDriver() { thread_.join(); }

 private:
  std::thread thread_;
};

}  // namespace kelvo::test
