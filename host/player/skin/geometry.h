// Points and rectangles in pixels of a skin, before any enlarging.
#pragma once

#include <stddef.h>

#include <vector>

namespace velmora {

struct Point {
  int x, y;
};

constexpr bool operator==(Point a, Point b) {
  return a.x == b.x && a.y == b.y;
}

struct Size {
  int width, height;
};

constexpr bool operator==(Size a, Size b) {
  return a.width == b.width && a.height == b.height;
}

struct Rect {
  int x, y, width, height;

  constexpr int right() const { return x + width; }
  constexpr int bottom() const { return y + height; }
  constexpr bool empty() const { return width <= 0 || height <= 0; }
  constexpr bool Contains(Point p) const {
    return p.x >= x && p.x < right() && p.y >= y && p.y < bottom();
  }
};

constexpr bool operator==(const Rect& a, const Rect& b) {
  return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

constexpr int Clamp(int value, int least, int most) {
  return value < least ? least : value > most ? most : value;
}

// How windows stick to one another and to the edges of the screen.

// Where the moved windows end up when their user has dragged them to these places: edges that come
// near an edge of the others or of the screen snap to it. The result is what to add to all of them.
Point SnapDistance(const std::vector<Rect>& moved, const std::vector<Rect>& others,
                   const Rect& screen, int reach);

// Whether two windows stand edge to edge.
bool Touch(const Rect& a, const Rect& b);

// The windows that hang together with `windows[main]`, at one or more removes; itself included.
std::vector<bool> DockedTo(size_t main, const std::vector<Rect>& windows);

// Where a window goes that hangs on the main one when that changes from `before` to `after`, its
// scale or its height: edges keep their distance, in the new scale, from those of the main window.
Point FollowMain(const Rect& window, const Rect& before, const Rect& after);

}  // namespace velmora
