#include "entry/language/language_setting.h"

#include "base/windows/registry.h"
#include "base/windows/settings_keys.h"
#include "entry/language/modules.h"

namespace kelvo {
namespace {

uint32_t g_language_id = 0;

}  // namespace

void SwitchToConfiguredLanguage() noexcept {
  const RegistryKey settings = RegistryKey::OpenOrCreate(kSettingsKey);
  static_cast<void>(settings.ReadNumber(L"Language", &g_language_id));
  LoadLanguageLibrary(g_language_id, true);
}

}  // namespace kelvo
