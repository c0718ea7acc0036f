#include "entry/language/modules.h"

#include "base/text/wide.h"
#include "base/windows/registry.h"
#include "kelvo/settings.h"

namespace kelvo {
namespace {

constexpr uint32_t kUsEnglish = 1033;
constexpr size_t kNameCapacity = 32;

uint32_t g_language_id = 0;
HMODULE g_own = nullptr;
HMODULE g_language = nullptr;
wchar_t g_language_name[kNameCapacity];

void AppendHex4(wchar_t* text, size_t capacity, uint32_t number) noexcept {
  int digits = 4;
  while (digits < 8 && number >> (4 * digits) != 0) ++digits;
  wchar_t hex[9];
  for (int i = 0; i < digits; ++i) {
    hex[i] = L"0123456789ABCDEF"[number >> 4 * (digits - 1 - i) & 15];
  }
  hex[digits] = 0;
  static_cast<void>(AppendWide(text, capacity, hex));
}

}  // namespace

HMODULE OwnModule() noexcept {
  return g_own;
}
void SetOwnModule(HMODULE module) noexcept {
  g_own = module;
}
HMODULE LanguageModule() noexcept {
  return g_language;
}

bool LoadLanguageLibrary(uint32_t language_id, bool own) noexcept {
  UniqueModule(std::exchange(g_language, nullptr));
  if (language_id == 0 || language_id == kUsEnglish) return true;
  CopyWide(g_language_name, kNameCapacity, own ? L"kv_mui." : L"mui.");
  AppendHex4(g_language_name, kNameCapacity, language_id);
  static_cast<void>(AppendWide(g_language_name, kNameCapacity, L".dll"));
  g_language = LoadLibraryW(g_language_name);
  return g_language != nullptr;
}

void SwitchToConfiguredLanguage() noexcept {
  const RegistryKey settings = RegistryKey::OpenOrCreate(kSettingsKey);
  static_cast<void>(settings.ReadNumber(kLanguageValue, &g_language_id));
  LoadLanguageLibrary(g_language_id, true);
}

// The system counts how often a module has been loaded.
LanguageHold::LanguageHold() noexcept
    : module_(g_language ? LoadLibraryW(g_language_name) : nullptr) {}

}  // namespace kelvo
