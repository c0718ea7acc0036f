#pragma once

#include "base/windows/pocketpc.h"

namespace kelvo {

// Makes a dialog fill the screen, above its menu bar, with a Done button in the caption. `more`:
// further SHIDIF_ flags. For the dialog's initialisation.
inline void MakeFullScreen(HWND dialog, DWORD more) noexcept {
  SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | more};
  SHInitDialog(&info);
}

}  // namespace kelvo
