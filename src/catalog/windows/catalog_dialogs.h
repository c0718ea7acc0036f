// What the pages show above themselves.
#pragma once

#include <windows.h>

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// "Do you want to permanently delete ...?" True for Yes.
bool AskDelete(HWND owner, const wchar_t* path) noexcept;

// Lets the user change the tag of an MPEG audio file, modally. True when a tag was written; the
// entry itself is not changed.
bool EditTag(FileSystem& files, HWND parent, const MediaEntry& entry) noexcept;

// The wait cursor for as long as it lives.
class WaitCursor {
 public:
  WaitCursor() noexcept : before_(SetCursor(Shape())) {}
  ~WaitCursor() { SetCursor(before_); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
  // After messages have been handled.
  void Renew() const noexcept { SetCursor(Shape()); }

 private:
  static HCURSOR Shape() noexcept { return LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)); }
  HCURSOR before_;
};

}  // namespace kelvo
