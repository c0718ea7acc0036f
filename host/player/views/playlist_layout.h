// What is where in the playlist window, which has any size from kPlaylistLeast in whole steps.
#pragma once

#include "host/player/skin/geometry.h"

namespace velmora {

constexpr Size kPlaylistLeast = {275, 116};
constexpr Size kPlaylistStep = {25, 29};
constexpr int kPlaylistRow = 13;
constexpr int kPlaylistTop = 20;
constexpr int kPlaylistBottom = 38;
constexpr int kPlaylistRolled = 14;  // height of the window when only its title is left

enum class PlaylistControl {
  kNone,
  kClose,
  kShade,
  kAddMenu,
  kRemoveMenu,
  kSelectMenu,
  kMiscMenu,
  kListMenu,
  kScrollBar,
  kSizeCorner,
  kList,
  kTitleBar,
};

// The nearest size that the window can have.
Size PlaylistSizeNear(Size size);

PlaylistControl PlaylistControlAt(Size window, Point point);
// Of the buttons; for where their menus open.
Rect PlaylistButtonPlace(Size window, PlaylistControl control);
Rect PlaylistListPlace(Size window);
int PlaylistRows(Size window);  // as many as can be seen whole
// The row, from 0, of a point at that height in the list; above it -1 or less.
int PlaylistRowAt(Size window, int y);

constexpr int kScrollThumbHeight = 18;
// The upper edge of the thumb of the scroll bar when `first` of `last` is the first row shown.
int PlaylistThumbTop(Size window, int first, int last);
// Which first row puts the middle of the thumb there.
int PlaylistFirstRowAt(Size window, int y, int last);

}  // namespace velmora
