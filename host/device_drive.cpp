#include "host/system.h"

#include <windows.h>

namespace velmora {

DeviceDrive::DeviceDrive(const std::wstring& folder) {
  const std::wstring full = FullPath(folder);
  const DWORD attributes = GetFileAttributesW(full.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) return;
  wchar_t before[MAX_PATH];
  if (GetCurrentDirectoryW(MAX_PATH, before)) before_ = before;
  if (full.size() == 3 && full[1] == L':') {  // a drive already
    mapped_ = false;
    if (SetCurrentDirectoryW(full.c_str())) name_ = full.substr(0, 2);
    return;
  }
  // Several hosts may run: each takes a letter that is free.
  for (wchar_t letter = L'V'; letter >= L'F'; --letter) {
    const std::wstring name = {letter, L':'};
    wchar_t target[MAX_PATH];
    if (QueryDosDeviceW(name.c_str(), target, MAX_PATH) != 0) continue;
    if (!DefineDosDeviceW(0, name.c_str(), full.c_str())) continue;
    if (SetCurrentDirectoryW((name + L"\\").c_str())) {
      name_ = name;
      return;
    }
    DefineDosDeviceW(DDD_REMOVE_DEFINITION, name.c_str(), nullptr);
  }
}

DeviceDrive::~DeviceDrive() {
  if (name_.empty()) return;
  SetCurrentDirectoryW(before_.c_str());
  if (mapped_) DefineDosDeviceW(DDD_REMOVE_DEFINITION, name_.c_str(), nullptr);
}

}  // namespace velmora
