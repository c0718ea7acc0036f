#include "base/windows/registry.h"

namespace kelvo {
namespace {

// The device ignores a leading backslash, the desktop finds no such key.
const wchar_t* WithoutLeadingBackslash(const wchar_t* path) noexcept {
  return *path == L'\\' ? path + 1 : path;
}

}  // namespace

RegistryKey RegistryKey::Open(const wchar_t* path) noexcept {
  HKEY key = nullptr;
  const LONG result =
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, WithoutLeadingBackslash(path), 0, KEY_QUERY_VALUE, &key);
  return RegistryKey(result == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey RegistryKey::OpenOrCreate(const wchar_t* path) noexcept {
  HKEY key = nullptr;
  DWORD disposition;
  const LONG result =
      RegCreateKeyExW(HKEY_LOCAL_MACHINE, WithoutLeadingBackslash(path), 0, nullptr, 0,
                      KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr, &key, &disposition);
  return result == ERROR_SUCCESS ? RegistryKey(key) : Open(path);
}

bool RegistryKey::ReadNumber(const wchar_t* name, uint32_t* number) const noexcept {
  uint32_t value = 0;
  DWORD bytes = sizeof(value);
  DWORD type;
  if (!key_ || RegQueryValueExW(key_.get(), name, nullptr, &type, reinterpret_cast<BYTE*>(&value),
                                &bytes) != ERROR_SUCCESS) {
    return false;
  }
  if (bytes != sizeof(value)) return false;
  *number = value;
  return true;
}

bool RegistryKey::WriteNumber(const wchar_t* name, uint32_t number) const noexcept {
  return key_ &&
         RegSetValueExW(key_.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                        sizeof(number)) == ERROR_SUCCESS;
}

bool RegistryKey::ReadText(const wchar_t* name, wchar_t* text, size_t capacity) const noexcept {
  DWORD bytes = static_cast<DWORD>(capacity * sizeof(wchar_t));
  DWORD type;
  const bool found = key_ &&
                     RegQueryValueExW(key_.get(), name, nullptr, &type,
                                      reinterpret_cast<BYTE*>(text), &bytes) == ERROR_SUCCESS &&
                     type == REG_SZ;
  // The stored text need not be terminated.
  size_t length = found ? bytes / sizeof(wchar_t) : 0;
  if (length > 0 && text[length - 1] == 0) --length;
  const bool fits = length < capacity;
  text[fits ? length : 0] = 0;
  return found && fits;
}

}  // namespace kelvo
