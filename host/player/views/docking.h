// How windows stick to one another and to the edges of the screen.
#pragma once

#include <stddef.h>

#include <vector>

#include "host/player/skin/geometry.h"

namespace velmora {

// Where the moved windows end up when their user has dragged them to these places: edges that come
// near an edge of the others or of the screen snap to it. The result is what to add to all of them.
Point SnapDistance(const std::vector<Rect>& moved, const std::vector<Rect>& others,
                   const Rect& screen, int reach);

// Whether two windows stand edge to edge.
bool Touch(const Rect& a, const Rect& b);

// The windows that hang together with `windows[main]`, at one or more removes; itself included.
std::vector<bool> DockedTo(size_t main, const std::vector<Rect>& windows);

}  // namespace velmora
