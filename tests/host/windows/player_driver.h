#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "host/player/skin/bitmap.h"
#include "host/player/skin/skin.h"

namespace velmora::test {

// Runs the player on a thread of its own and uses it as a user does: with the mouse, with keys, and
// by looking at its windows. Its music is heard by nobody.
class PlayerDriver {
 public:
  // Returns when the windows are open. `session` is the file of its settings.
  PlayerDriver(const std::vector<std::wstring>& files, const std::wstring& session);
  ~PlayerDriver() { Leave(); }

  HWND main() const { return main_; }
  HWND equalizer() const { return equalizer_; }
  HWND playlist() const { return playlist_; }
  // Stops the music, closes the player and waits for its end.
  void Leave();

  // Points are pixels of the skin.
  void Press(HWND window, Point at);
  void MoveTo(HWND window, Point at);
  void Release(HWND window, Point at);
  void Click(HWND window, Point at);
  void DoubleClick(HWND window, Point at);
  void Drag(HWND window, Point from, Point to);
  void Wheel(HWND window, int notches);
  void Key(HWND window, int key);
  void Drop(HWND window, const std::vector<std::wstring>& paths);
  // A visible window of the player of that class, or null.
  static HWND Find(const wchar_t* class_name);
  // What a menu would send.
  void Command(int command);

  // What the window shows, in pixels of the skin.
  Bitmap Picture(HWND window) const;
  // Waits, for as long as the test may take.
  static void Until(const std::function<bool()>& true_now);
  // Waits a while for what takes effect behind the user's back: what is on the screen.
  static bool Soon(const std::function<bool()>& true_now);

 private:
  LPARAM PointOf(Point at) const;
  int Scale() const;

  HWND main_ = nullptr;
  HWND equalizer_ = nullptr;
  HWND playlist_ = nullptr;
  std::thread thread_;
};

// Whether a part of the picture is that part of the skin's bitmap.
bool Shows(const Bitmap& picture, Rect place, const Bitmap& image, Point from);

RECT Place(HWND window);

}  // namespace velmora::test
