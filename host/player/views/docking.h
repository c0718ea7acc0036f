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

// Where a window goes that hangs on the main one when that changes from `before` to `after`, its
// scale or its height: edges keep their distance, in the new scale, from those of the main window.
Point FollowMain(const Rect& window, const Rect& before, const Rect& after);

}  // namespace velmora
