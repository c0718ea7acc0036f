#include "entry/language/modules.h"

#include "base/text/wide.h"
#include "base/windows/unique_handle.h"

namespace kelvo {
namespace {

constexpr uint32_t kUsEnglish = 1033;

HMODULE g_own = nullptr;
HMODULE g_language = nullptr;

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
  wchar_t name[32];
  CopyWide(name, 32, own ? L"kv_mui." : L"mui.");
  AppendHex4(name, 32, language_id);
  static_cast<void>(AppendWide(name, 32, L".dll"));
  g_language = LoadLibraryW(name);
  return g_language != nullptr;
}

}  // namespace kelvo
