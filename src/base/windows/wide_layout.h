// Dialogs are laid out for the device's screen. On a wider one the fields take the room, and the
// buttons stay at the right.
#pragma once

#include <windows.h>

namespace kelvo {

inline constexpr int kDeviceWidth = 240;  // pixels

class WideLayout {
 public:
  // For the dialog's initialisation and its WM_SIZE.
  void Fit(HWND dialog) noexcept;

 private:
  int width_ = kDeviceWidth;  // what the controls are laid out for
};

// How much wider than the device's screen a window is; 0 when it is not.
int ExtraWidth(HWND window) noexcept;

}  // namespace kelvo
