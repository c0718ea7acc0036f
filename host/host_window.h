#pragma once

#include <windows.h>

namespace velmora {

// The window above which the library shows its dialogs, and which it sends messages about
// bookmarks.
class HostWindow {
 public:
  HostWindow();
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND handle() const { return window_; }
  // Takes the next message of this number out of the queue; false when there is none.
  bool Take(UINT message, MSG* out) const {
    return PeekMessageW(out, window_, message, message, PM_REMOVE) != 0;
  }

 private:
  HWND window_;
};

}  // namespace velmora
