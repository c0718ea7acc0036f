#include "pocketpc/atlce300/container_window.h"

extern "C" {

BOOL WINAPI AtlAxWinInit() {
  return kelvo::RegisterContainerWindow();
}

HRESULT WINAPI AtlAxGetControl(HWND window, IUnknown** control) {
  return kelvo::ContainedControl(window, control);
}

}  // extern "C"
