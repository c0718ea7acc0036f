// The player as a program of its own, used the way its user does: mouse, keys, commands of menus.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "host/player/windows/commands.h"
#include "tests/support/installation_folder.h"

namespace velmora::test {

// Nothing waits longer than this for anything, also when the player has gone or hangs.
constexpr DWORD kLongestWaitMs = 60000;

// A folder with the program and all that belongs to it, which holds what it keeps between runs too.
class Installed {
 public:
  Installed();
  const kelvo::test::InstallationFolder& folder() const { return folder_; }
  std::wstring Path(const std::wstring& name) const { return folder_.Path(name); }

 private:
  kelvo::test::InstallationFolder folder_;
};

class PlayerProcess {
 public:
  PlayerProcess() = default;
  ~PlayerProcess();  // ends it when it still runs
  PlayerProcess(const PlayerProcess&) = delete;
  PlayerProcess& operator=(const PlayerProcess&) = delete;

  // Starts it with these words and waits for its main window.
  bool Start(const Installed& installed, const std::wstring& words);
  // Closes it by its close button, which is at `button`, and waits for its end; false unless that
  // was a good one.
  bool Quit(POINT button = {268, 7});

  // False, and a failure that names `what`, when it does not come true or the player ends before.
  bool WaitFor(const std::string& what, const std::function<bool()>& done);
  // Until the title begins with this ("1. Song").
  bool WaitForSong(const std::string& song);
  bool WaitUntilStopped();

  // A visible window of that class and, if given, of that title.
  HWND Find(const wchar_t* type, const wchar_t* title = nullptr) const;
  HWND WaitForWindow(const wchar_t* type, const wchar_t* title = nullptr);
  HWND main() const { return Find(L"VelmoraMain"); }
  HWND equalizer() const { return Find(L"VelmoraEqualizer"); }
  HWND playlist() const { return Find(L"VelmoraPlaylist"); }
  std::string Title() const;

  // Presses and releases the button there, in pixels of the window.
  void Click(HWND window, int x, int y) const;
  // What a menu item or shortcut of the main window does.
  void Do(UserCommand command) const { PostMessageW(main(), WM_COMMAND, command, 0); }
  void Key(HWND window, int key) const;
  // 0 when the player does not answer in time.
  LRESULT Send(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;

  HANDLE process() const { return process_; }
  DWORD id() const { return id_; }

 private:
  bool HasEnded() const { return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0; }
  std::string State() const;  // for failures

  HANDLE process_ = nullptr;
  DWORD id_ = 0;
};

}  // namespace velmora::test
