// Points and rectangles in pixels of a skin, before any enlarging.
#pragma once

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

}  // namespace velmora
