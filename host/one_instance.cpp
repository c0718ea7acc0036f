#include "host/one_instance.h"

#include <stdint.h>
#include <wchar.h>

namespace velmora {
namespace {

constexpr ULONG_PTR kRequest = 0x56454C31;
constexpr wchar_t kWindow[] = L"VelmoraMain";
constexpr DWORD kPatienceMs = 30000;  // a player may just be starting, or looking through a device
constexpr DWORD kStepMs = 50;

// Names of mutexes and properties are shorter than paths, and without backslashes.
std::wstring NameOf(std::wstring place) {
  CharLowerBuffW(place.data(), static_cast<DWORD>(place.size()));
  uint64_t hash = 14695981039346656037u;
  for (const wchar_t c : place) hash = (hash ^ static_cast<uint64_t>(c)) * 1099511628211u;
  wchar_t name[40];
  _snwprintf(name, 40, L"Velmora-%08x%08x", static_cast<unsigned>(hash >> 32),
             static_cast<unsigned>(hash));
  return name;
}

HWND FindPlayer(const std::wstring& name) {
  HWND window = nullptr;
  do {
    window = FindWindowExW(nullptr, window, kWindow, nullptr);
  } while (window && !GetPropW(window, name.c_str()));
  return window;
}

}  // namespace

OneInstance::OneInstance(const std::wstring& place)
    : name_(NameOf(place)), mutex_(CreateMutexW(nullptr, FALSE, name_.c_str())) {}

OneInstance::~OneInstance() {
  if (first_) ReleaseMutex(mutex_);
  if (mutex_) CloseHandle(mutex_);
}

OneInstance::Answer OneInstance::Ask(const Request& request) {
  std::wstring text = request.device + L'\0';
  for (const std::wstring& file : request.files) text += file + L'\0';
  COPYDATASTRUCT data = {kRequest, static_cast<DWORD>(text.size() * sizeof(wchar_t)), text.data()};
  for (DWORD waited = 0; waited < kPatienceMs; waited += kStepMs) {
    const DWORD free = WaitForSingleObject(mutex_, kStepMs);
    first_ = free != WAIT_TIMEOUT;  // also when there can be no mutex, or its owner broke down
    if (first_) return Answer::kFirst;
    const HWND player = FindPlayer(name_);
    if (!player) continue;
    DWORD process = 0;
    GetWindowThreadProcessId(player, &process);
    AllowSetForegroundWindow(process);
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(player, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_NORMAL,
                             kPatienceMs, &result)) {
      return Answer::kNone;
    }
    if (result == 0) continue;  // it is just leaving
    return result == 1 ? Answer::kTaken : Answer::kOtherDevice;
  }
  return Answer::kNone;
}

void OneInstance::Mark(HWND window, const std::wstring& place) {
  SetPropW(window, NameOf(place).c_str(), reinterpret_cast<HANDLE>(1));
}

bool OneInstance::Read(const COPYDATASTRUCT& data, Request* request) {
  const auto* text = static_cast<const wchar_t*>(data.lpData);
  const size_t count = data.cbData / sizeof(wchar_t);
  if (data.dwData != kRequest || count == 0 || text[count - 1] != 0) return false;
  request->device = text;
  request->files.clear();
  for (size_t at = request->device.size() + 1; at < count; at += request->files.back().size() + 1) {
    request->files.emplace_back(text + at);
  }
  return true;
}

}  // namespace velmora
