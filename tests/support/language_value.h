// The user's "Language" in the registry, put back to "none" at the end.
#pragma once

#include <windows.h>

namespace kelvo::test {

class LanguageValue {
 public:
  ~LanguageValue() { Remove(); }

  void Set(DWORD language) { Write(REG_DWORD, &language, sizeof(language)); }
  void Write(DWORD type, const void* bytes, DWORD count) {
    HKEY key;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    RegSetValueExW(key, L"Language", 0, type, static_cast<const BYTE*>(bytes), count);
    RegCloseKey(key);
  }
  void Remove() {
    HKEY key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_SET_VALUE, &key) != ERROR_SUCCESS) return;
    RegDeleteValueW(key, L"Language");
    RegCloseKey(key);
  }

 private:
  static constexpr wchar_t kKey[] = L"SOFTWARE\\Ostrabyte\\Velmora";
};

}  // namespace kelvo::test
