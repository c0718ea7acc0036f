// The library that is checked, and what the checks work with.
#pragma once

#include <kelvo/kelvo.h>
#include <windows.h>

#include <functional>
#include <string>

#include "host/check/report.h"

namespace velmora::check {

struct Subject {
  KelvoGetFeatureFunction get_feature = nullptr;
  std::wstring folder;  // of the library's file, with a backslash at its end
  std::wstring work;    // empty and ours, with a backslash at its end
  std::wstring ogg;     // a file to play; empty: none
  std::wstring wma;
  HWND window = nullptr;  // ours, hidden
  bool windows = false;   // dialogs may be shown

  template <class Feature>
  Feature* Get(int32_t id) const {
    return static_cast<Feature*>(get_feature(id));
  }
};

void CheckFeatures(const Subject& subject, Report& report);
void CheckReloading(const std::wstring& library, const Subject& subject, Report& report);
void CheckInputWithoutFile(const Subject& subject, Report& report);
void CheckPlayback(const Subject& subject, Report& report);
void CheckWma(const Subject& subject, Report& report);
void CheckEffects(const Subject& subject, Report& report);
void CheckPresets(const Subject& subject, Report& report);
void CheckBookmarks(const Subject& subject, Report& report);
void CheckSkins(const Subject& subject, Report& report);
void CheckCatalog(const Subject& subject, Report& report);

// The registry under HKEY_LOCAL_MACHINE, for this process alone, while this lives: what the user
// has there is neither read nor changed.
class OwnRegistry {
 public:
  OwnRegistry();
  ~OwnRegistry();
  OwnRegistry(const OwnRegistry&) = delete;
  OwnRegistry& operator=(const OwnRegistry&) = delete;

  void Set(const wchar_t* key, const wchar_t* name, DWORD type, const void* bytes, size_t count);
  void SetLanguage(DWORD language);
  void Remove(const wchar_t* key, const wchar_t* name);
};

std::string ReadBytes(const std::wstring& path);
void WriteBytes(const std::wstring& path, const std::string& bytes);
// UTF-16 as it lies in a file.
std::string BytesOf(const std::wstring& text);

// While this lives: once a window of ours with this title is to be seen, `act` is called, once, on
// this thread, out of the modal loop of the library.
class WindowUser {
 public:
  WindowUser(const wchar_t* title, std::function<void(HWND)> act);
  ~WindowUser();
  WindowUser(const WindowUser&) = delete;
  WindowUser& operator=(const WindowUser&) = delete;

  bool acted() const { return acted_; }
  void OnTimer();

 private:
  const wchar_t* title_;
  std::function<void(HWND)> act_;
  UINT_PTR timer_;
  bool acted_ = false;
};

// Takes the messages that wait for the window: the first with this number, or one with number 0.
MSG TakeMessage(HWND window, UINT number);

}  // namespace velmora::check
