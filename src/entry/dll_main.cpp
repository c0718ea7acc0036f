// Loading and unloading. The feature objects have been built when the attach handler runs, and are
// destroyed after the detach handler.
#include <windows.h>

#include "entry/feature_objects.h"
#include "entry/language/language_setting.h"
#include "entry/language/modules.h"

namespace {

bool g_features_started = false;

}  // namespace

// `process_ends` is null when the library is unloaded and the process lives on.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_ATTACH) {
    kelvo::SetOwnModule(instance);
    kelvo::SwitchToConfiguredLanguage();
    g_features_started = kelvo::StartFeatures(instance);
  } else if (reason == DLL_PROCESS_DETACH && g_features_started) {
    kelvo::ShutDownFeatures(process_ends != nullptr);
  }
  return TRUE;
}
