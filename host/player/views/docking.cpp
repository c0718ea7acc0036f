#include "host/player/skin/geometry.h"

#include <cstdlib>

namespace velmora {
namespace {

// A line in one direction: an edge-to-edge length of a window.
struct Span {
  int from, to;
};

Span Across(const Rect& r) {
  return {r.x, r.right()};
}

Span Down(const Rect& r) {
  return {r.y, r.bottom()};
}

bool Overlap(Span a, Span b, int reach) {
  return a.from < b.to + reach && b.from < a.to + reach;
}

// Keeps the shorter way in *best; ways farther than `reach` do not count.
void Consider(int way, int reach, int* best, bool* found) {
  if (std::abs(way) > reach || (*found && std::abs(way) >= std::abs(*best))) return;
  *best = way;
  *found = true;
}

// Snaps the edges of `moved` to those of `other`; to its outer side too unless it is the screen.
void SnapSpan(Span moved, Span other, bool outside, int reach, int* best, bool* found) {
  Consider(other.from - moved.from, reach, best, found);
  Consider(other.to - moved.to, reach, best, found);
  if (!outside) return;
  Consider(other.to - moved.from, reach, best, found);
  Consider(other.from - moved.to, reach, best, found);
}

}  // namespace

Point SnapDistance(const std::vector<Rect>& moved, const std::vector<Rect>& others,
                   const Rect& screen, int reach) {
  Point way = {0, 0};
  bool across = false;
  bool down = false;
  for (const Rect& window : moved) {
    for (const Rect& other : others) {
      if (Overlap(Down(window), Down(other), reach)) {
        SnapSpan(Across(window), Across(other), true, reach, &way.x, &across);
      }
      if (Overlap(Across(window), Across(other), reach)) {
        SnapSpan(Down(window), Down(other), true, reach, &way.y, &down);
      }
    }
    SnapSpan(Across(window), Across(screen), false, reach, &way.x, &across);
    SnapSpan(Down(window), Down(screen), false, reach, &way.y, &down);
  }
  return way;
}

bool Touch(const Rect& a, const Rect& b) {
  const bool beside = a.right() == b.x || b.right() == a.x;
  const bool above = a.bottom() == b.y || b.bottom() == a.y;
  return (beside && Overlap(Down(a), Down(b), 0)) || (above && Overlap(Across(a), Across(b), 0));
}

std::vector<bool> DockedTo(size_t main, const std::vector<Rect>& windows) {
  std::vector<bool> docked(windows.size(), false);
  docked[main] = true;
  for (bool more = true; more;) {
    more = false;
    for (size_t i = 0; i < windows.size(); ++i) {
      for (size_t j = 0; j < windows.size(); ++j) {
        if (docked[i] && !docked[j] && Touch(windows[i], windows[j])) docked[j] = more = true;
      }
    }
  }
  return docked;
}

Point FollowMain(const Rect& window, const Rect& before, const Rect& after) {
  // Rounded down on all sides, so that windows that touch one another still do.
  const auto scaled = [&](int distance) {
    const int product = distance * after.width;
    const int quotient = product / before.width;
    return quotient * before.width > product ? quotient - 1 : quotient;
  };
  const int x = after.x + scaled(window.x - before.x);
  if (window.y >= before.bottom()) return {x, after.bottom() + scaled(window.y - before.bottom())};
  return {x, after.y + scaled(window.y - before.y)};
}

}  // namespace velmora
