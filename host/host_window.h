#pragma once

#include <windows.h>

#include <vector>

namespace velmora {

// What the user asked for in the bookmarks window.
struct BookmarkRequest {
  bool play;  // otherwise enqueue
  int index;
};

// The window above which the library shows its dialogs, and which it sends messages about
// bookmarks.
class HostWindow {
 public:
  HostWindow();
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND handle() const { return window_; }
  const std::vector<BookmarkRequest>& requests() const { return requests_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  HWND window_;
  std::vector<BookmarkRequest> requests_;
};

}  // namespace velmora
