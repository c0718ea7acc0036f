#include "pocketpc/atlce300/container_window.h"

extern "C" {

BOOL WINAPI AtlAxWinInit() {
  return kelvo::RegisterContainerWindow();
}

HRESULT WINAPI AtlAxGetControl(HWND window, IUnknown** control) {
  return kelvo::ContainedControl(window, control);
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_DETACH && !process_ends) kelvo::UnregisterContainerWindow();
  return TRUE;
}

}  // extern "C"
