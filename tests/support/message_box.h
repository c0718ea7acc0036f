// Answers the next message box of this program, and keeps what it said.
#pragma once

#include "tests/support/dialog_driver.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

class MessageBoxAnswer {
 public:
  explicit MessageBoxAnswer(const wchar_t* caption)
      : driver_(caption, [this](HWND box) {
          wchar_t text[400] = L"";
          GetDlgItemTextW(box, 0xFFFF, text, 400);
          text_ = Utf8(text);
          PostMessageW(box, WM_COMMAND, IDOK, 0);
        }) {}

  const std::string& text() const { return text_; }  // once the box is closed

 private:
  std::string text_;
  DialogDriver driver_;
};

}  // namespace kelvo::test
