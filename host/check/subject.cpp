#include "host/check/subject.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace velmora::check {
namespace {

std::wstring Root() {
  return L"Software\\KelvoCheck\\" + std::to_wstring(GetCurrentProcessId());
}

std::map<UINT_PTR, WindowUser*> g_users;

void CALLBACK OnTimerMessage(HWND, UINT, UINT_PTR timer, DWORD) {
  const auto found = g_users.find(timer);
  if (found != g_users.end()) found->second->OnTimer();
}

HWND FindOwn(const wchar_t* title) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, nullptr, title)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window)) break;
  }
  return window;
}

}  // namespace

OwnRegistry::OwnRegistry() {
  HKEY machine = nullptr;
  RegCreateKeyExW(HKEY_CURRENT_USER, Root().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                  &machine, nullptr);
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine);
  RegCloseKey(machine);
}

OwnRegistry::~OwnRegistry() {
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  RegDeleteTreeW(HKEY_CURRENT_USER, Root().c_str());
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KelvoCheck");  // stays while another check runs
}

void OwnRegistry::Set(const wchar_t* key, const wchar_t* name, DWORD type, const void* bytes,
                      size_t count) {
  HKEY opened = nullptr;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
  RegSetValueExW(opened, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(count));
  RegCloseKey(opened);
}

void OwnRegistry::SetLanguage(DWORD language) {
  Set(KELVO_SETTINGS_KEY, KELVO_LANGUAGE_VALUE, REG_DWORD, &language, sizeof(language));
}

void OwnRegistry::Remove(const wchar_t* key, const wchar_t* name) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key, 0, KEY_SET_VALUE, &opened) != ERROR_SUCCESS) return;
  RegDeleteValueW(opened, name);
  RegCloseKey(opened);
}

std::string ReadBytes(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const std::wstring& path, const std::string& bytes) {
  std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
}

std::string BytesOf(const std::wstring& text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

WindowUser::WindowUser(const wchar_t* title, std::function<void(HWND)> act)
    : title_(title), act_(std::move(act)), timer_(SetTimer(nullptr, 0, 20, &OnTimerMessage)) {
  g_users[timer_] = this;
}

WindowUser::~WindowUser() {
  KillTimer(nullptr, timer_);
  g_users.erase(timer_);
}

void WindowUser::OnTimer() {
  const HWND window = acted_ ? nullptr : FindOwn(title_);
  if (!window) return;
  acted_ = true;
  act_(window);
}

MSG TakeMessage(HWND window, UINT number) {
  MSG message = {}, found = {};
  while (PeekMessageW(&message, window, 0, 0, PM_REMOVE)) {
    if (message.message == number && found.message == 0) found = message;
  }
  return found;
}

}  // namespace velmora::check
