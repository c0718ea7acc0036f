// Dialogs that write down what reaches them, and helpers to drive windows.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "base/windows/pocketpc.h"

namespace kelvo {

struct Recorder {
  DWORD flags = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN;
  bool wants_bar = true;
  bool ends_with_done = false;  // a page that destroys itself on command 1
  std::vector<int> commands;
  std::vector<NMRGINFO> gestures;
  SHMENUBARINFO bar = {};
};

inline SHMENUBARINFO BarOf(HWND parent, UINT id, int bitmap, DWORD flags = 0) {
  SHMENUBARINFO info = {};
  info.cbSize = sizeof(info);
  info.hwndParent = parent;
  info.dwFlags = flags;
  info.nToolBarId = id;
  info.hInstRes = GetModuleHandleW(nullptr);
  info.nBmpId = bitmap;
  info.cBmpImages = 5;
  return info;
}

inline INT_PTR CALLBACK RecordedProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* recorder = reinterpret_cast<Recorder*>(GetWindowLongPtrW(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG: {
      recorder = reinterpret_cast<Recorder*>(lparam);
      SetWindowLongPtrW(dialog, DWLP_USER, lparam);
      SHINITDLGINFO init = {SHIDIM_FLAGS, dialog, recorder->flags};
      SHInitDialog(&init);
      recorder->bar = BarOf(dialog, 50, 114);
      if (recorder->wants_bar) SHCreateMenuBar(&recorder->bar);
      return TRUE;
    }
    case WM_COMMAND:
      if (!recorder) return FALSE;
      recorder->commands.push_back(LOWORD(wparam));
      if (LOWORD(wparam) == IDOK && recorder->ends_with_done) DestroyWindow(dialog);
      return TRUE;
    case WM_NOTIFY:
      if (recorder && reinterpret_cast<NMHDR*>(lparam)->code == GN_CONTEXTMENU) {
        recorder->gestures.push_back(*reinterpret_cast<NMRGINFO*>(lparam));
      }
      return FALSE;
    default:
      return FALSE;
  }
}

inline HWND OpenDialog(Recorder* recorder, HWND parent = nullptr) {
  return CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), parent, &RecordedProc,
                            reinterpret_cast<LPARAM>(recorder));
}

// Handles what is in the queue now.
inline void Pump() {
  const UINT end = RegisterWindowMessageW(L"KelvoTestEnd");
  PostThreadMessageW(GetCurrentThreadId(), end, 0, 0);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != end) {
    DispatchMessageW(&message);
  }
}

inline RECT WindowRect(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

inline SIZE ClientSize(HWND window) {
  RECT rect = {};
  GetClientRect(window, &rect);
  return {rect.right, rect.bottom};
}

}  // namespace kelvo
