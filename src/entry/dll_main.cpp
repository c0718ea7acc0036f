// The library's door: loading, unloading, and its one export. The feature objects have been built
// when the attach handler runs, and are destroyed after the detach handler.
#include <windows.h>

#include "entry/feature_objects.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "kelvo/features.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

// "Velmora Feature Pack", a carriage return, "version 2.51 installed.", in the user's language. The
// same buffer each time, rewritten by each call.
wchar_t* VersionText() noexcept {
  constexpr size_t kCapacity = 256;
  static wchar_t text[kCapacity];
  FormatLocalized(text, kCapacity, IDS_VERSION, {KELVO_VERSION_MAJOR, KELVO_VERSION_MINOR});
  return text;
}

}  // namespace
}  // namespace kelvo

// `process_ends` is null when the library is unloaded and the process lives on.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_ATTACH) {
    kelvo::SetOwnModule(instance);
    kelvo::SwitchToConfiguredLanguage();
    kelvo::StartFeatures(instance);
  } else if (reason == DLL_PROCESS_DETACH) {
    kelvo::ShutDownFeatures(process_ends != nullptr);
  }
  return TRUE;
}

extern "C" void* __cdecl GetFeature(int32_t id) {
  switch (id) {
    case kelvo::kFeatureSwitchLanguage:
      kelvo::SwitchToConfiguredLanguage();
      return nullptr;
    case kelvo::kFeatureVersionText:
      return kelvo::VersionText();
    default:
      return kelvo::FeatureObject(id);
  }
}
