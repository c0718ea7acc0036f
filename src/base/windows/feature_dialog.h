// What the dialogs of several features have in common.
#pragma once

#include "base/windows/pocketpc.h"

namespace kelvo {

// Makes a dialog fill the screen, above its menu bar, with a Done button in the caption. `more`:
// further SHIDIF_ flags. For the dialog's initialisation.
inline void MakeFullScreen(HWND dialog, DWORD more) noexcept {
  SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | more};
  SHInitDialog(&info);
}

// Of the bookmarks window and the dialog for saving a playlist only one is open at a time. Held
// while one of them is; user-interface thread only.
class DialogGuard {
 public:
  DialogGuard() noexcept : taken_(!open_) { open_ = true; }
  ~DialogGuard() {
    if (taken_) open_ = false;
  }
  DialogGuard(const DialogGuard&) = delete;
  DialogGuard& operator=(const DialogGuard&) = delete;

  // False: another one is open.
  bool taken() const noexcept { return taken_; }

 private:
  inline static bool open_ = false;

  bool taken_;
};

}  // namespace kelvo
