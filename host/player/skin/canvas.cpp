#include "host/player/skin/canvas.h"

#include <algorithm>

namespace velmora {
namespace {

Rect Intersection(const Rect& a, const Rect& b) {
  const int x = std::max(a.x, b.x);
  const int y = std::max(a.y, b.y);
  return {x, y, std::min(a.right(), b.right()) - x, std::min(a.bottom(), b.bottom()) - y};
}

Rect Bounds(const Bitmap& bitmap) {
  return {0, 0, bitmap.width, bitmap.height};
}

}  // namespace

void Canvas::Fill(Rect area, Colour colour) {
  const Rect visible = Intersection(area, Bounds(picture_));
  if (visible.empty()) return;
  for (int y = visible.y; y < visible.bottom(); ++y) {
    std::fill_n(picture_.Row(y) + visible.x, visible.width, colour);
  }
}

void Canvas::Draw(const Bitmap& image, Rect source, Point to) {
  const Point shift = {to.x - source.x, to.y - source.y};
  const Rect there = Intersection(source, Bounds(image));
  const Rect target = Intersection(
      {there.x + shift.x, there.y + shift.y, there.width, there.height}, Bounds(picture_));
  if (there.empty() || target.empty()) return;
  for (int y = target.y; y < target.bottom(); ++y) {
    const Colour* from = image.Row(y - shift.y) + target.x - shift.x;
    std::copy_n(from, target.width, picture_.Row(y) + target.x);
  }
}

void Canvas::Tile(const Bitmap& image, Rect source, Rect area) {
  if (source.empty()) return;
  for (int y = area.y; y < area.bottom(); y += source.height) {
    for (int x = area.x; x < area.right(); x += source.width) {
      const Rect part = {source.x, source.y, std::min(source.width, area.right() - x),
                         std::min(source.height, area.bottom() - y)};
      Draw(image, part, {x, y});
    }
  }
}

Rect Difference(const Bitmap& before, const Bitmap& after) {
  if (before.width != after.width || before.height != after.height) return Bounds(after);
  int left = after.width;
  int right = 0;
  int top = after.height;
  int bottom = 0;
  for (int y = 0; y < after.height; ++y) {
    const Colour* old_row = before.Row(y);
    const Colour* row = after.Row(y);
    const Colour* end = row + after.width;
    const Colour* first = std::mismatch(row, end, old_row).first;
    if (first == end) continue;
    int last = after.width - 1;
    while (row[last] == old_row[last]) --last;
    left = std::min(left, static_cast<int>(first - row));
    right = std::max(right, last + 1);
    top = std::min(top, y);
    bottom = y + 1;
  }
  return right > left ? Rect{left, top, right - left, bottom - top} : Rect{0, 0, 0, 0};
}

}  // namespace velmora
