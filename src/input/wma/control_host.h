// The invisible window in which the player control lives.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include "base/sync/shared_word.h"
#include "base/windows/com_ptr.h"
#include "base/windows/unique_handle.h"
#include "input/wma/event_sink.h"

namespace kelvo {

// There is one in the process at a time: its window class has a fixed name. All operations on the
// thread that calls StartUp.
class ControlHost : public EventSink {
 public:
  // Whether the control was made and accepted its settings. Any thread.
  bool available() const noexcept { return available_ != 0; }

 protected:
  ControlHost() noexcept = default;
  ~ControlHost() = default;

  // Enters a multithreaded apartment and makes the window. False when one of these fails; nothing
  // is left behind then. True also without a control: see available().
  bool StartUp(HINSTANCE instance) noexcept;
  bool started() const noexcept { return started_; }

  // After a StartUp that succeeded: Close or Abandon, then LeaveApartment.
  // Gives control and window back.
  void Close() noexcept;
  // Lets go of the control without a call into it: when the process ends, its threads are gone
  // already and would never answer.
  void Abandon() noexcept;
  void LeaveApartment() noexcept;

  // The control's own interface (player_control.h), or null.
  IUnknown* control() const noexcept { return control_.get(); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam,
                                    LPARAM lparam) noexcept;
  bool MakeWindow() noexcept;
  void OnCreate(HWND window) noexcept;
  void OnDestroy() noexcept;
  void Connect(IUnknown* hosted) noexcept;
  bool Configure() noexcept;

  HINSTANCE instance_ = nullptr;
  HWND window_ = nullptr;
  ComPtr<IUnknown> control_;
  SharedWord available_;
  bool started_ = false;
  DWORD cookie_ = 0;
  ComPtr<IConnectionPoint> connection_;  // held while connected
  UniqueModule containers_;              // keeps the code of the control's container loaded
};

}  // namespace kelvo
