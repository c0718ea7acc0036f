// A folder of its own that is registered as the host's installation while this lives.
#pragma once

#include <windows.h>

#include <string>

#include "kelvo/settings.h"

namespace kelvo::test {

class InstallationFolder {
 public:
  InstallationFolder() {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    path_ = std::wstring(temporary) + L"kelvo-test-" + std::to_wstring(GetCurrentProcessId());
    CreateDirectoryW(path_.c_str(), nullptr);
    HKEY key;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kInstallationKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                    &key, nullptr);
    RegSetValueExW(key, kInstallFolderValue, 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(path_.c_str()),
                   static_cast<DWORD>((path_.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
  }
  ~InstallationFolder() {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kInstallationKey);
    Empty(path_);
  }
  InstallationFolder(const InstallationFolder&) = delete;
  InstallationFolder& operator=(const InstallationFolder&) = delete;

  std::wstring Path(const std::wstring& name) const { return path_ + L"\\" + name; }
  const std::wstring& path() const { return path_; }
  void Write(const std::wstring& name, const std::string& bytes) const {
    const HANDLE file =
        CreateFileW(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
  }
  std::string Read(const std::wstring& name) const {
    const HANDLE file = CreateFileW(Path(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "no file";
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD got = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
    CloseHandle(file);
    return bytes;
  }

 private:
  static void Empty(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
      const std::wstring name = found.cFileName;
      if (name == L"." || name == L"..") continue;
      const std::wstring path = folder + L"\\" + name;
      if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
        Empty(path);
      } else {
        DeleteFileW(path.c_str());
      }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    RemoveDirectoryW(folder.c_str());
  }

  std::wstring path_;
};

}  // namespace kelvo::test
