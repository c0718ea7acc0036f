#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/player/skin/canvas.h"
#include "host/player/windows/tips.h"

namespace velmora {

class PlayerApp;

// A window without a frame that shows a canvas, at its size or enlarged, and reports the mouse in
// the canvas's pixels. It repaints what has changed and nothing else.
class SkinWindow {
 public:
  explicit SkinWindow(PlayerApp& app) : app_(app) {}
  SkinWindow(const SkinWindow&) = delete;
  SkinWindow& operator=(const SkinWindow&) = delete;

  // Hidden at first. The owner keeps it before itself and hides it with itself; null for none.
  bool Create(const wchar_t* class_name, const wchar_t* title, HWND owner);
  void Destroy();

  HWND handle() const { return window_; }
  bool visible() const { return IsWindowVisible(window_) != FALSE; }
  bool active() const { return active_; }
  void Show(bool shown);  // without taking the keyboard
  // On the screen.
  Rect place() const;
  void MoveTo(Point position);
  // Takes over a changed scale or size.
  void UpdateSize();
  // After a change of the language.
  void UpdateTips();
  // Draws, and repaints what is not as before. Does nothing while hidden.
  void Refresh();

 protected:
  ~SkinWindow() { Destroy(); }

  virtual Size CanvasSize() const = 0;
  virtual void Draw(Canvas* canvas) = 0;
  virtual std::vector<Tip> OwnTips() const = 0;

  // The left button. While it is down the window gets all of the mouse's moves; OnCancel comes
  // instead of OnRelease when something else takes the mouse.
  virtual void OnPress(Point point) = 0;
  virtual void OnDrag(Point point) = 0;
  virtual void OnRelease(Point point) = 0;
  virtual void OnCancel() = 0;
  virtual void OnDoubleClick(Point point) { OnPress(point); }
  virtual void OnWheel(int notches) = 0;
  // A key that is no shortcut. False: nothing was done.
  virtual bool OnKey(int key);
  // The right button, or the menu key at the window's corner.
  virtual void OnMenu(Point screen, Point point);
  virtual void OnClose() = 0;
  virtual void OnFiles(const std::vector<std::wstring>& paths);  // dropped on it
  // Whether the window is dragged by this point.
  virtual bool IsHandle(Point point) const = 0;
  // Messages that no other handler takes.
  virtual LRESULT OnOther(UINT message, WPARAM wparam, LPARAM lparam);

  PlayerApp& app_;

 private:
  enum class Capture { kNone, kControl, kMove };

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void OnButtonDown(LPARAM lparam, bool twice);
  void OnMouseMove(LPARAM lparam);
  void OnButtonUp(Point point);
  void OnCaptureLost();
  void OnWheelTurned(int delta);
  void OnMenuAsked(LPARAM lparam);
  void OnDrop(HDROP drop);
  void Paint();

  // Of a point in a message.
  Point ToCanvas(LPARAM lparam) const;
  Point ToScreen(LPARAM lparam) const;

  HWND window_ = nullptr;
  Tips tips_;
  Canvas canvas_;
  Bitmap drawn_;  // what is on the screen
  Capture capture_ = Capture::kNone;
  int wheel_ = 0;  // turned, and not yet a whole notch
  bool active_ = false;
};

}  // namespace velmora
