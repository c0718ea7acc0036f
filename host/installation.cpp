#include "host/installation.h"

#include <kelvo/settings.h>
#include <windows.h>

#include "host/program_folder.h"

namespace velmora {

void RegisterInstallation() {
  const std::wstring folder = ProgramFolder();
  HKEY key;
  if (folder.empty() || RegCreateKeyExW(HKEY_LOCAL_MACHINE, kelvo::kInstallationKey, 0, nullptr, 0,
                                        KEY_SET_VALUE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return;
  }
  RegSetValueExW(key, kelvo::kInstallFolderValue, 0, REG_SZ,
                 reinterpret_cast<const BYTE*>(folder.c_str()),
                 static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(key);
}

}  // namespace velmora
