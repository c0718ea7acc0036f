// A folder of its own that is registered as the host's installation while this lives.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
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
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  InstallationFolder(const InstallationFolder&) = delete;
  InstallationFolder& operator=(const InstallationFolder&) = delete;

  std::wstring Path(const std::wstring& name) const { return path_ + L"\\" + name; }
  const std::wstring& path() const { return path_; }
  void Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(std::filesystem::path(Path(name)), std::ios::binary) << bytes;
  }
  std::string Read(const std::wstring& name) const {
    std::ifstream file(std::filesystem::path(Path(name)), std::ios::binary);
    if (!file) return "no file";
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::wstring path_;
};

}  // namespace kelvo::test
