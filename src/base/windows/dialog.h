// Dialogs as objects. One dialog procedure serves them all and maps the window to its object.
#pragma once

#include <windows.h>

namespace kelvo {

// A modal dialog while it runs. User-interface thread only; the object outlives its window (it
// usually lives on the stack of the function that runs it).
class ModalDialog {
 public:
  ModalDialog(const ModalDialog&) = delete;
  ModalDialog& operator=(const ModalDialog&) = delete;

  // For the system's modal dialog functions, with the object as the parameter.
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wparam,
                                    LPARAM lparam) noexcept;
  LPARAM parameter() noexcept { return reinterpret_cast<LPARAM>(this); }

 protected:
  enum class Handled { kNo, kYes };

  ModalDialog() noexcept = default;
  ~ModalDialog() = default;

  // Fills the controls. True lets the system focus the first control, false when the focus has been
  // set here.
  virtual bool OnInit() noexcept = 0;
  virtual Handled OnCommand(int id, int notification) noexcept {
    static_cast<void>(id);
    static_cast<void>(notification);
    return Handled::kNo;
  }
  // All other messages; *result is the message's result when handled.
  virtual Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) noexcept {
    static_cast<void>(message);
    static_cast<void>(wparam);
    static_cast<void>(lparam);
    static_cast<void>(result);
    return Handled::kNo;
  }
  virtual void OnDestroy() noexcept {}

  HWND window() const noexcept { return window_; }
  HWND control(int id) const noexcept { return GetDlgItem(window_, id); }
  void Close(INT_PTR result) noexcept { EndDialog(window_, result); }

 private:
  static ModalDialog* Find(HWND window) noexcept;
  INT_PTR Dispatch(UINT message, WPARAM wparam, LPARAM lparam) noexcept;

  HWND window_ = nullptr;
  ModalDialog* below_ = nullptr;  // the dialog that was opened before this one
};

inline constexpr int kDeviceWidth = 240;  // pixels

// Dialogs are laid out for the device's screen. On a wider one the fields take the room, and the
// buttons stay at the right.
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
