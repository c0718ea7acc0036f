#include "tools/screenshots/studio.h"

#include <kelvo/catalog.h>
#include <kelvo/settings.h>

namespace screenshots {
namespace {

void SetValue(const wchar_t* key_name, const wchar_t* name, DWORD type, const void* data,
              DWORD bytes) {
  HKEY key;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, key_name, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                      nullptr) != ERROR_SUCCESS) {
    return;
  }
  RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes);
  RegCloseKey(key);
}

void RemoveValue(const wchar_t* name) {
  HKEY key;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kelvo::kSettingsKey, 0, KEY_SET_VALUE, &key) !=
      ERROR_SUCCESS)
    return;
  RegDeleteValueW(key, name);
  RegCloseKey(key);
}

// Away from the corner, so that boxes wider than the handheld have room; and without a size, so
// that it takes no click of the dialogs above it.
HWND ShowHostWindow() {
  WNDCLASSW type = {};
  type.lpfnWndProc = DefWindowProcW;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = L"ScreenshotHost";
  RegisterClassW(&type);
  return CreateWindowExW(0, type.lpszClassName, L"Velmora", WS_POPUP | WS_VISIBLE, 200, 100, 0, 0,
                         nullptr, nullptr, type.hInstance, nullptr);
}

}  // namespace

Studio::Studio(const wchar_t* device, DWORD language) : device_(device) {
  why_ = Start(device, language);
}

const wchar_t* Studio::Start(const wchar_t* device, DWORD language) {
  if (!SetCurrentDirectoryW(device)) return L"the device is no folder";
  // The bookmarks into the device's root; everything else as on a first start.
  SetValue(kelvo::kInstallationKey, kelvo::kInstallFolderValue, REG_SZ, L"", sizeof(wchar_t));
  RemoveValue(kelvo::kGroupingValue);
  RemoveValue(kelvo::kLanguageValue);
  if (language != 0)
    SetValue(kelvo::kSettingsKey, kelvo::kLanguageValue, REG_DWORD, &language, sizeof(language));
  if (language != 0) {
    wchar_t name[32];
    wsprintfW(name, L"kv_mui.%04X.dll", language);
    const HMODULE found = LoadLibraryW(name);
    if (!found) return L"there is no library of this language";
    FreeLibrary(found);
  }
  library_ = LoadLibraryW(L"Kelvo.dll");
  host_module_ = LoadLibraryW(L"velmora.exe");
  if (!library_ || !host_module_) return L"Kelvo.dll or velmora.exe cannot be loaded";
  get_feature_ = reinterpret_cast<kelvo::GetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(library_, "GetFeature")));
  if (!get_feature_) return L"Kelvo.dll exports no GetFeature";
  window_ = ShowHostWindow();
  return window_ ? nullptr : L"no window can be opened";
}

void Studio::ShowCatalog() const {
  Get<kelvo::Catalog>(kelvo::kFeatureCatalog)->ShowCatalog(host_module_, window_);
}

Studio::~Studio() {
  if (window_) DestroyWindow(window_);
  if (library_) FreeLibrary(library_);
  if (host_module_) FreeLibrary(host_module_);
  RemoveValue(kelvo::kGroupingValue);
  RemoveValue(kelvo::kLanguageValue);
}

}  // namespace screenshots
