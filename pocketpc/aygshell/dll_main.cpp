#include <windows.h>

#include "pocketpc/aygshell/menu_bar.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
  // A class left behind would point into the next tenant of this address.
  if (reason == DLL_PROCESS_DETACH) kelvo::UnregisterMenuBarClass();
  return TRUE;
}
