#include <windows.h>

#include "kelvo/features.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/effects_check.h"

namespace kelvo::tool {

EffectsProcessor* LoadEffects(const wchar_t* path) noexcept {
  const wchar_t* const name = path ? path : L"Kelvo.dll";
  const HMODULE library = LoadLibraryW(name);  // until the program ends
  if (!library) {
    PrintError(name, "cannot be loaded");
    return nullptr;
  }
  const auto get_feature = reinterpret_cast<GetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(library, "GetFeature")));
  void* const feature = get_feature ? get_feature(kFeatureEffects) : nullptr;
  if (!feature) PrintError(name, "has no such feature");
  return static_cast<EffectsProcessor*>(feature);
}

}  // namespace kelvo::tool
