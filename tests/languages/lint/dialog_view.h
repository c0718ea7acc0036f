// A dialog template made into a window that nobody sees, and measured there.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kelvo::test {

struct ControlView {
  int id;
  std::wstring kind;  // window class; of buttons and labels with their type
  std::wstring text;  // as the resource has it
  RECT place;         // in the dialog's client area, pixels
  int needs_width;    // that its text is seen whole; 0 without text
  int needs_height;
};

struct DialogView {
  bool extended = false;  // a template that the device does not read
  bool is_page = false;
  std::wstring caption;
  SIZE client = {};
  bool has_edit = false;
  std::vector<ControlView> controls;  // in the order of the template
};

// False when the module has no such dialog or it cannot be created.
bool ViewDialog(HMODULE module, UINT id, DialogView* out);

// The width of a text in the dialogs' font; `bold`: in that of captions.
int TextWidth(const std::wstring& text, bool bold);

}  // namespace kelvo::test
