#include "host/full_path.h"

#include <kelvo/types.h>
#include <windows.h>

namespace velmora {

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[kelvo::kMaxText];
  const DWORD length = GetFullPathNameW(path.c_str(), kelvo::kMaxText, full, nullptr);
  return length > 0 && length < kelvo::kMaxText ? std::wstring(full, length) : std::wstring();
}

}  // namespace velmora
