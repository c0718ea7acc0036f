#include "host/system.h"

#include <kelvo/settings.h>
#include <kelvo/types.h>

namespace velmora {

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = L"";
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return std::wstring();
  const std::wstring program(path, length);
  return program.substr(0, program.find_last_of(L'\\'));
}

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[kelvo::kMaxText];
  const DWORD length = GetFullPathNameW(path.c_str(), kelvo::kMaxText, full, nullptr);
  return length > 0 && length < kelvo::kMaxText ? std::wstring(full, length) : std::wstring();
}

std::wstring SystemReason() {
  wchar_t text[256];
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                GetLastError(), 0, text, 256, nullptr);
  while (length > 0 && wcschr(L"\r\n. ", text[length - 1])) --length;
  return length > 0 ? std::wstring(text, length) : L"the system does not say why";
}

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
