#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/player/skin/geometry.h"

namespace velmora {

// A text that is shown while the mouse rests on a part of a window, in the canvas's pixels.
struct Tip {
  Rect place;
  int text;
};

// The tips of one window, which outlives this.
class Tips {
 public:
  Tips() = default;
  ~Tips() { Forget(); }
  Tips(const Tips&) = delete;
  Tips& operator=(const Tips&) = delete;

  // In place of those before.
  void Show(HWND window, const std::vector<Tip>& tips, int scale);
  void Forget();

 private:
  HWND tips_ = nullptr;
  UINT_PTR count_ = 0;
};

}  // namespace velmora
