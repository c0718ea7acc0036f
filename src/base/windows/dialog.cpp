#include "base/windows/dialog.h"

namespace kelvo {
namespace {

// The word of a dialog window that holds a message's result; its name differs between the systems.
constexpr int kMessageResult = 0;

ModalDialog* g_top = nullptr;  // the open dialogs, newest first; user-interface thread only

}  // namespace

ModalDialog* ModalDialog::Find(HWND window) noexcept {
  ModalDialog* dialog = g_top;
  while (dialog && dialog->window_ != window) dialog = dialog->below_;
  return dialog;
}

INT_PTR CALLBACK ModalDialog::Procedure(HWND window, UINT message, WPARAM wparam,
                                        LPARAM lparam) noexcept {
  if (message == WM_INITDIALOG) {
    ModalDialog* dialog = reinterpret_cast<ModalDialog*>(lparam);
    dialog->window_ = window;
    dialog->below_ = g_top;
    g_top = dialog;
    return dialog->OnInit();
  }
  ModalDialog* dialog = Find(window);
  return dialog ? dialog->Dispatch(message, wparam, lparam) : FALSE;
}

INT_PTR ModalDialog::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  switch (message) {
    case WM_COMMAND:
      return OnCommand(LOWORD(wparam), HIWORD(wparam)) == Handled::kYes;
    case WM_DESTROY: {
      OnDestroy();
      ModalDialog** link = &g_top;
      while (*link != this) link = &(*link)->below_;
      *link = below_;
      window_ = nullptr;
      return FALSE;
    }
    default: {
      LRESULT result = 0;
      if (OnMessage(message, wparam, lparam, &result) == Handled::kNo) return FALSE;
      SetWindowLongW(window_, kMessageResult, static_cast<LONG>(result));
      return TRUE;
    }
  }
}

}  // namespace kelvo
