// Answers the next message box of this thread, and keeps what it said.
#pragma once

#include <windows.h>

#include <string>

#include "tests/support/wide_text.h"

namespace kelvo::test {

// One at a time, on the thread that will show the box.
class MessageBoxAnswer {
 public:
  explicit MessageBoxAnswer(const wchar_t* caption) {
    caption_ = caption;
    text_.clear();
    timer_ = SetTimer(nullptr, 0, 20, &Look);
  }
  ~MessageBoxAnswer() { KillTimer(nullptr, timer_); }
  MessageBoxAnswer(const MessageBoxAnswer&) = delete;
  MessageBoxAnswer& operator=(const MessageBoxAnswer&) = delete;

  // Empty when there was none.
  const std::string& text() const { return text_; }

 private:
  static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), &Answer, 0);
  }
  static BOOL CALLBACK Answer(HWND box, LPARAM) {
    wchar_t part[400] = L"";
    GetWindowTextW(box, part, 400);
    if (wcscmp(part, caption_) != 0) return TRUE;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      GetWindowTextW(child, part, 400);
      const std::string text = Utf8(part);
      if (text.size() > text_.size()) text_ = text;
    }
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    return FALSE;
  }

  static inline const wchar_t* caption_;
  static inline std::string text_;
  UINT_PTR timer_;
};

}  // namespace kelvo::test
