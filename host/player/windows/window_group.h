#pragma once

#include <vector>

#include "host/player/windows/skin_window.h"

namespace velmora {

// The player's windows: they stick together when they touch, and the main one, the first, takes
// along those that hang on it.
class WindowGroup {
 public:
  void Add(SkinWindow* window) { windows_.push_back(window); }

  // The user drags a window by its title, with the mouse at these points of the screen.
  void BeginMove(SkinWindow* window, Point mouse);
  void Move(Point mouse);

  // Below one another, the main window first.
  void Stack();
  // The scale of all windows, or the main window's height, changes: `change` does that, and the
  // windows that hang on the main one do so afterwards.
  template <class Change>
  void KeepTogether(Change change) {
    const std::vector<Rect> before = Places();
    change();
    Rearrange(before);
  }
  void UpdateTips();
  // All but the main window.
  void Enable(bool enabled);
  // A window manager raises what is clicked, whether enabled or not: the dialog is to stay above.
  void RaiseDialog() const;
  // Puts windows back that are outside of all screens.
  void BringIntoView();

 private:
  std::vector<Rect> Places() const;
  std::vector<bool> DockedToMain(const std::vector<Rect>& places) const;
  void Rearrange(const std::vector<Rect>& before);

  std::vector<SkinWindow*> windows_;
  // While a window is dragged.
  Point mouse_ = {0, 0};
  std::vector<size_t> moved_;
  std::vector<Rect> from_;  // of all windows
};

}  // namespace velmora
