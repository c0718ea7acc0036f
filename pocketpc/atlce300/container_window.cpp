// The window class "AtlAxWin" for all modules of the process. A window of the class makes the
// control that its text names while it is created, on the creating thread, which must be in an
// apartment; creation fails when the control cannot be made. An empty text gives an empty
// container. The control is closed with its window.
#include <windows.h>

#include "base/memory/heap.h"
#include "pocketpc/atlce300/hosted_control.h"

namespace kelvo {
namespace {

constexpr wchar_t kClassName[] = L"AtlAxWin";

HINSTANCE ThisModule() noexcept {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      kClassName, &module);
  return module;
}

// A container answers this message with its control, not counted; other windows know nothing of it.
UINT GetControlMessage() noexcept {
  static const UINT message = RegisterWindowMessageW(L"WM_ATLGETCONTROL");
  return message;
}

HostedControl* Contained(HWND window) noexcept {
  return reinterpret_cast<HostedControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT OnCreate(HWND window, const CREATESTRUCTW& creation) noexcept {
  if (!creation.lpszName || !creation.lpszName[0]) return 0;
  HeapPtr<HostedControl> hosted(HeapNew<HostedControl>());
  if (!hosted || FAILED(hosted->Create(creation.lpszName, window))) return -1;
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(hosted.Release()));
  return 0;
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == GetControlMessage()) {
    const HostedControl* hosted = Contained(window);
    return hosted ? reinterpret_cast<LRESULT>(hosted->get()) : 0;
  }
  switch (message) {
    case WM_CREATE:
      return OnCreate(window, *reinterpret_cast<const CREATESTRUCTW*>(lparam));
    case WM_NCDESTROY: {
      const HeapPtr<HostedControl> hosted(Contained(window));
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      break;
    }
    default:
      break;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace
}  // namespace kelvo

extern "C" {

// Also true when the class is there already.
BOOL WINAPI AtlAxWinInit() {
  WNDCLASSW window_class = {};
  window_class.style = CS_GLOBALCLASS;
  window_class.lpfnWndProc = &kelvo::Procedure;
  window_class.hInstance = kelvo::ThisModule();
  window_class.lpszClassName = kelvo::kClassName;
  return RegisterClassW(&window_class) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

// The control of a container window, with a reference for the caller; E_FAIL for other windows and
// for empty containers.
HRESULT WINAPI AtlAxGetControl(HWND window, IUnknown** control) {
  if (!control) return E_POINTER;
  *control = reinterpret_cast<IUnknown*>(SendMessageW(window, kelvo::GetControlMessage(), 0, 0));
  if (!*control) return E_FAIL;
  (*control)->AddRef();
  return S_OK;
}

// A later module of the same name may lie elsewhere, so the class does not stay.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_DETACH && !process_ends) UnregisterClassW(kelvo::kClassName, module);
  return TRUE;
}

}  // extern "C"
