#pragma once

#include <windows.h>

#include <ole2.h>

#include "base/windows/com_ptr.h"

namespace kelvo {

// The control inside one container window.
class HostedControl {
 public:
  HostedControl() noexcept = default;
  ~HostedControl() { Close(); }
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;

  // Makes the control of a class id in braces, from the component beside this DLL (KELVO_PLAYER in
  // the environment names another), and activates it in `window`. An object that is no OLE object
  // is held all the same.
  HRESULT Create(const wchar_t* class_id, HWND window) noexcept;
  void Close() noexcept;

  IUnknown* get() const noexcept { return control_.get(); }

 private:
  ComPtr<IUnknown> control_;
};

}  // namespace kelvo
