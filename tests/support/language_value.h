// The user's "Language" in a registry of this process alone while this lives: other tests that run
// meanwhile keep theirs. (A setting of the installation that is there anyway is not seen then.)
#pragma once

#include <windows.h>

#include <cstdlib>
#include <string>

#include "kelvo/settings.h"

namespace kelvo::test {

class LanguageValue {
 public:
  LanguageValue() {
    HKEY machine = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, Root().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &machine, nullptr);
    // Otherwise the value would stay in everybody's registry.
    if (!machine || RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine) != ERROR_SUCCESS)
      std::abort();
    RegCloseKey(machine);
  }
  ~LanguageValue() {
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, Root().c_str());
  }
  LanguageValue(const LanguageValue&) = delete;
  LanguageValue& operator=(const LanguageValue&) = delete;

  void Set(DWORD language) { Write(REG_DWORD, &language, sizeof(language)); }
  void Write(DWORD type, const void* bytes, DWORD count) {
    HKEY key;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                    nullptr);
    RegSetValueExW(key, kLanguageValue, 0, type, static_cast<const BYTE*>(bytes), count);
    RegCloseKey(key);
  }
  void Remove() {
    HKEY key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_SET_VALUE, &key) != ERROR_SUCCESS)
      return;
    RegDeleteValueW(key, kLanguageValue);
    RegCloseKey(key);
  }

 private:
  static std::wstring Root() {
    return L"Software\\KelvoTests\\" + std::to_wstring(GetCurrentProcessId());
  }
};

}  // namespace kelvo::test
