#include "pocketpc/wmpcmn/registration.h"

#include "base/text/wide.h"
#include "base/windows/unique_handle.h"
#include "input/wma/player_control.h"

namespace kelvo {
namespace {

constexpr wchar_t kThreadingModel[] = L"Both";

struct KeyPath {
  wchar_t text[80];
  explicit KeyPath(const wchar_t* subkey) noexcept {
    const wchar_t* const parts[] = {L"CLSID\\", kPlayerClassText, subkey};
    text[0] = 0;
    for (const wchar_t* part : parts) static_cast<void>(AppendWide(text, 80, part));  // it fits
  }
};

bool SetText(HKEY key, const wchar_t* name, const wchar_t* text) noexcept {
  const DWORD bytes = static_cast<DWORD>((WideLength(text) + 1) * sizeof(wchar_t));
  return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes) ==
         ERROR_SUCCESS;
}

bool ThisModulePath(wchar_t (&path)[MAX_PATH]) noexcept {
  HMODULE module;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          kThreadingModel, &module)) {
    return false;
  }
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  return length > 0 && length < MAX_PATH;
}

}  // namespace

bool RegisterPlayer() noexcept {
  wchar_t path[MAX_PATH];
  HKEY key;
  if (!ThisModulePath(path) ||
      RegCreateKeyExW(HKEY_CLASSES_ROOT, KeyPath(L"\\InprocServer32").text, 0, nullptr, 0,
                      KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const UniqueKey owned(key);
  return SetText(key, nullptr, path) && SetText(key, L"ThreadingModel", kThreadingModel);
}

bool UnregisterPlayer() noexcept {
  const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, KeyPath(L"").text);
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace kelvo
