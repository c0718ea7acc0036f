#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "host/player/windows/player_app.h"
#include "tests/player/rig.h"
#include "tests/support/user.h"

namespace velmora::test {

using kelvo::test::WaitFor;

// Runs the player on a thread of its own and uses it as a user does: with the mouse, with keys, and
// by looking at its windows.
class PlayerDriver {
 public:
  // Returns when the windows are open.
  explicit PlayerDriver(const PlayerOptions& options);
  ~PlayerDriver() { Leave(); }

  // Its lists, trees and dialogs.
  const kelvo::test::User& user() const { return *user_; }
  HWND main() const { return main_; }
  HWND equalizer() const { return equalizer_; }
  HWND playlist() const { return playlist_; }
  // "1. Song (0:08)", "Velmora" while it is stopped.
  std::string Title() const { return kelvo::test::User::Text(main_); }
  bool WaitForSong(const std::string& song) const;
  bool WaitUntilStopped() const;
  // Stops the music, closes the player and waits for its end.
  void Leave();
  // The same by its close button, and without stopping.
  void Quit();

  // Points are pixels of the skin.
  void Press(HWND window, Point at) const;
  void MoveTo(HWND window, Point at) const { Send(window, WM_MOUSEMOVE, MK_LBUTTON, at); }
  void Release(HWND window, Point at) const { Send(window, WM_LBUTTONUP, 0, at); }
  void Click(HWND window, Point at) const { Drag(window, at, at); }
  void DoubleClick(HWND window, Point at) const;
  void Drag(HWND window, Point from, Point to) const;
  void Wheel(HWND window, int notches) const;
  void Key(HWND window, int key) const { user().Key(window, static_cast<WPARAM>(key)); }
  void Drop(HWND window, const std::vector<std::wstring>& paths) const;
  // What a menu would send; Start does not wait, for what opens a dialog.
  void Command(int command) const;
  void Start(int command) const;

  // What the window shows, in pixels of the skin.
  Bitmap Picture(HWND window) const;

 private:
  void Send(HWND window, UINT message, WPARAM wparam, Point at) const;
  int Scale() const;

  std::atomic<kelvo::test::User*> user_{nullptr};
  HWND main_ = nullptr;
  HWND equalizer_ = nullptr;
  HWND playlist_ = nullptr;
  std::thread thread_;
};

// Whether a part of the picture is that part of the skin's bitmap.
bool Shows(const Bitmap& picture, Rect place, const Bitmap& image, Point from);

RECT Place(HWND window);

}  // namespace velmora::test
