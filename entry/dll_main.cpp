// Loading and unloading. The feature objects have been built when the attach handler runs, and are
// destroyed after the detach handler.
#include <windows.h>

#include "entry/language/language_setting.h"
#include "entry/language/modules.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    kelvo::SetOwnModule(instance);
    kelvo::SwitchToConfiguredLanguage();
  }
  return TRUE;
}
