// The library's one export.
#include <windows.h>

#include "entry/feature_objects.h"
#include "entry/language/language_setting.h"
#include "entry/version_text.h"
#include "kelvo/features.h"

extern "C" void* __cdecl GetFeature(int32_t id) {
  switch (id) {
    case kelvo::kFeatureSwitchLanguage:
      kelvo::SwitchToConfiguredLanguage();
      return nullptr;
    case kelvo::kFeatureVersionText:
      return const_cast<wchar_t*>(kelvo::VersionText());
    default:
      return kelvo::FeatureObject(id);
  }
}
