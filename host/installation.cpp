#include "host/installation.h"

#include <windows.h>

namespace velmora {

void RegisterInstallation() {
  wchar_t folder[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, folder, MAX_PATH);
  wchar_t* name = length < MAX_PATH ? wcsrchr(folder, L'\\') : nullptr;
  HKEY key;
  if (!name || RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Apps\\Ostrabyte Velmora", 0, nullptr,
                               0, KEY_SET_VALUE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return;
  }
  *name = 0;
  RegSetValueExW(key, L"InstallDir", 0, REG_SZ, reinterpret_cast<const BYTE*>(folder),
                 static_cast<DWORD>((wcslen(folder) + 1) * sizeof(wchar_t)));
  RegCloseKey(key);
}

}  // namespace velmora
