#include "host/program_folder.h"

#include <windows.h>

namespace velmora {

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = L"";
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return std::wstring();
  const std::wstring program(path, length);
  return program.substr(0, program.find_last_of(L'\\'));
}

}  // namespace velmora
