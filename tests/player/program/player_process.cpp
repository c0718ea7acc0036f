#include "tests/player/program/player_process.h"

#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

using kelvo::test::Utf8;

constexpr DWORD kAnswerMs = 20000;

void CopyMatching(const std::wstring& from, const std::wstring& pattern, const std::wstring& to) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((from + L"\\" + pattern).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
    const std::wstring name = std::wstring(L"\\") + found.cFileName;
    EXPECT_TRUE(CopyFileW((from + name).c_str(), (to + name).c_str(), FALSE)) << Utf8(name.c_str());
  } while (FindNextFileW(search, &found));
  FindClose(search);
}

struct Search {
  DWORD process;
  const wchar_t* type;
  const wchar_t* title;
  HWND found;
};

BOOL CALLBACK Compare(HWND window, LPARAM parameter) {
  Search& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.process || !IsWindowVisible(window)) return TRUE;
  wchar_t text[300] = L"";
  GetClassNameW(window, text, 300);
  if (lstrcmpW(text, search.type) != 0) return TRUE;
  GetWindowTextW(window, text, 300);
  if (search.title && lstrcmpW(text, search.title) != 0) return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

Installed::Installed() {
  wchar_t own[MAX_PATH];
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  std::wstring bin = own;
  bin.resize(bin.find_last_of(L'\\'));
  CopyMatching(bin, L"velmora.exe", folder_.path());
  CopyMatching(bin, L"*.dll", folder_.path());
  CreateDirectoryW(Path(L"skins").c_str(), nullptr);
  CopyMatching(bin + L"\\skins", L"default.zip", Path(L"skins"));
  CreateDirectoryW(Path(L"skins\\default").c_str(), nullptr);
  CopyMatching(bin + L"\\skins\\default", L"*", Path(L"skins\\default"));
}

PlayerProcess::~PlayerProcess() {
  if (!process_) return;
  if (!HasEnded()) {
    TerminateProcess(process_, 99);
    WaitForSingleObject(process_, kLongestWaitMs);
  }
  CloseHandle(process_);
}

bool PlayerProcess::Start(const Installed& installed, const std::wstring& words) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started;
  std::wstring line = L"\"" + installed.Path(L"velmora.exe") + L"\" " + words;
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started)) {
    ADD_FAILURE() << "velmora.exe does not start: " << GetLastError();
    return false;
  }
  CloseHandle(started.hThread);
  process_ = started.hProcess;
  id_ = started.dwProcessId;
  return WaitFor("the main window", [&] { return main() != nullptr; });
}

bool PlayerProcess::Quit(POINT button) {
  Click(main(), button.x, button.y);
  if (WaitForSingleObject(process_, kLongestWaitMs) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "the player does not end; " << State();
    return false;
  }
  DWORD code = ~0u;
  GetExitCodeProcess(process_, &code);
  EXPECT_EQ(code, 0u);
  CloseHandle(process_);
  process_ = nullptr;
  return code == 0;
}

bool PlayerProcess::WaitFor(const std::string& what, const std::function<bool()>& done) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < kLongestWaitMs; Sleep(10)) {
    if (done()) return true;
    if (!HasEnded()) continue;
    DWORD code = 0;
    GetExitCodeProcess(process_, &code);
    ADD_FAILURE() << "the player ended with " << code << " while waiting for " << what;
    return false;
  }
  ADD_FAILURE() << "waited in vain for " << what << "; " << State();
  return false;
}

bool PlayerProcess::WaitForSong(const std::string& song) {
  return WaitFor("the song \"" + song + "\"", [&] { return Title().rfind(song, 0) == 0; });
}

bool PlayerProcess::WaitUntilStopped() {
  return WaitFor("the end of the music", [&] { return Title() == "Velmora"; });
}

HWND PlayerProcess::Find(const wchar_t* type, const wchar_t* title) const {
  Search search = {id_, type, title, nullptr};
  EnumWindows(&Compare, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND PlayerProcess::WaitForWindow(const wchar_t* type, const wchar_t* title) {
  HWND found = nullptr;
  WaitFor("a window " + Utf8(type) + " \"" + (title ? Utf8(title) : "") + "\"",
          [&] { return (found = Find(type, title)) != nullptr; });
  return found;
}

std::string PlayerProcess::Title() const {
  wchar_t text[300] = L"";
  GetWindowTextW(main(), text, 300);
  return Utf8(text);
}

void PlayerProcess::Click(HWND window, int x, int y) const {
  const LPARAM at = MAKELPARAM(x, y);
  PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
  PostMessageW(window, WM_LBUTTONUP, 0, at);
}

void PlayerProcess::Key(HWND window, int key) const {
  PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), static_cast<LPARAM>(0xC0000001));
}

LRESULT PlayerProcess::Send(HWND window, UINT message, WPARAM wparam, LPARAM lparam) const {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL, kAnswerMs, &result)) {
    return 0;
  }
  return static_cast<LRESULT>(result);
}

std::string PlayerProcess::State() const {
  DWORD_PTR result;
  const bool answers =
      SendMessageTimeoutW(main(), WM_NULL, 0, 0, SMTO_NORMAL, kAnswerMs, &result) != 0;
  return "its title is \"" + Title() + (answers ? "\", it answers" : "\", it does not answer");
}

}  // namespace velmora::test
