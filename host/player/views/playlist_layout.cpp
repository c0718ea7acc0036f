#include "host/player/views/playlist_layout.h"

#include "host/player/views/controls.h"

namespace velmora {
namespace {

using Control = PlaylistControl;

constexpr int kLeftBorder = 12;
constexpr int kRightBorder = 20;

int NearStep(int length, int least, int step) {
  return length <= least ? least : least + (length - least + step / 2) / step * step;
}

Slider ScrollBar(Size window, int last) {
  const int length = window.height - kPlaylistTop - kPlaylistBottom;
  return {kPlaylistTop, length, kScrollThumbHeight, last < 1 ? 1 : last};
}

}  // namespace

Size PlaylistSizeNear(Size size) {
  return {NearStep(size.width, kPlaylistLeast.width, kPlaylistStep.width),
          NearStep(size.height, kPlaylistLeast.height, kPlaylistStep.height)};
}

Rect PlaylistButtonPlace(Size window, PlaylistControl control) {
  const int y = window.height - kPlaylistBottom + 8;
  switch (control) {
    case Control::kClose:
      return {window.width - 11, 3, 9, 9};
    case Control::kShade:
      return {window.width - 21, 3, 9, 9};
    case Control::kAddMenu:
      return {14, y, 22, 18};
    case Control::kRemoveMenu:
      return {43, y, 22, 18};
    case Control::kSelectMenu:
      return {72, y, 22, 18};
    case Control::kMiscMenu:
      return {101, y, 22, 18};
    case Control::kListMenu:
      return {window.width - 46, y, 22, 18};
    case Control::kSizeCorner:
      return {window.width - 20, window.height - 20, 20, 20};
    case Control::kScrollBar:
      return {window.width - kRightBorder + 3, kPlaylistTop, 12,
              window.height - kPlaylistTop - kPlaylistBottom};
    case Control::kList:
      return PlaylistListPlace(window);
    case Control::kTitleBar:
      return {0, 0, window.width, kPlaylistTop};
    default:
      return {0, 0, 0, 0};
  }
}

PlaylistControl PlaylistControlAt(Size window, Point point) {
  constexpr Control kControls[] = {
      Control::kClose,      Control::kShade,    Control::kAddMenu,  Control::kRemoveMenu,
      Control::kSelectMenu, Control::kMiscMenu, Control::kListMenu, Control::kSizeCorner,
      Control::kScrollBar,  Control::kList,     Control::kTitleBar,
  };
  const bool rolled = window.height == kPlaylistRolled;
  for (Control control : kControls) {
    const bool in_title =
        control == Control::kClose || control == Control::kShade || control == Control::kTitleBar;
    if (rolled && !in_title) continue;
    if (PlaylistButtonPlace(window, control).Contains(point)) return control;
  }
  return Control::kNone;
}

Rect PlaylistListPlace(Size window) {
  return {kLeftBorder, kPlaylistTop, window.width - kLeftBorder - kRightBorder,
          window.height - kPlaylistTop - kPlaylistBottom};
}

int PlaylistRows(Size window) {
  return PlaylistListPlace(window).height / kPlaylistRow;
}

int PlaylistRowAt(Size window, int y) {
  const int below = y - PlaylistListPlace(window).y;
  return below < 0 ? -1 - (-below - 1) / kPlaylistRow : below / kPlaylistRow;
}

int PlaylistThumbTop(Size window, int first, int last) {
  return ScrollBar(window, last).ThumbAt(first);
}

int PlaylistFirstRowAt(Size window, int y, int last) {
  return last < 1 ? 0 : ScrollBar(window, last).ValueAt(y);
}

}  // namespace velmora
