// The host's side: the library, the registry, the device, and a window for the dialogs to open
// over.
#pragma once

#include <kelvo/features.h>
#include <windows.h>

#include <string>

namespace screenshots {

class Studio {
 public:
  // `device`: a drive's root with music and playlists. `language`: 0 for the built-in texts.
  Studio(const wchar_t* device, DWORD language);
  ~Studio();
  Studio(const Studio&) = delete;
  Studio& operator=(const Studio&) = delete;

  // Otherwise why() says what is missing.
  bool ready() const { return why_ == nullptr; }
  const wchar_t* why() const { return why_; }

  template <class Feature>
  Feature* Get(kelvo::FeatureId id) const {
    return static_cast<Feature*>(get_feature_(id));
  }
  void ShowCatalog() const;  // returns when the user closes it
  HWND window() const { return window_; }
  const std::wstring& device() const { return device_; }

 private:
  const wchar_t* Start(const wchar_t* device, DWORD language);

  std::wstring device_;
  const wchar_t* why_ = nullptr;
  HMODULE library_ = nullptr;
  HMODULE host_module_ = nullptr;
  kelvo::GetFeatureFunction get_feature_ = nullptr;
  HWND window_ = nullptr;
};

}  // namespace screenshots
