#pragma once

#include <windows.h>

namespace velmora {

enum class Wait { kEndOfPlayback, kInterrupted, kTimeout };

// An invisible window that receives the plug-ins' end-of-playback message.
class NotifyWindow {
 public:
  NotifyWindow();
  ~NotifyWindow();
  NotifyWindow(const NotifyWindow&) = delete;
  NotifyWindow& operator=(const NotifyWindow&) = delete;

  HWND handle() const { return window_; }
  // Pumps messages until playback ends, Ctrl-C, or the time is over.
  Wait Wait(DWORD milliseconds) const;

 private:
  HWND window_;
};

}  // namespace velmora
