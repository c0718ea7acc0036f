// What the playlist window shows.
#pragma once

#include <string>
#include <vector>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"
#include "host/player/views/playlist_layout.h"

namespace velmora {

struct PlaylistRow {
  std::u16string text;
  std::u16string time;  // at the right edge
  bool current;
  bool selected;
  bool dimmed = false;  // it cannot be played
};

struct PlaylistViewState {
  Size size = kPlaylistLeast;
  bool active = true;
  std::vector<PlaylistRow> rows;  // those in view, from the top
  int first = 0;                  // number of the first of them in the list
  int last_first = 0;             // what `first` is when the list's end is in view
  PlaylistControl pressed = PlaylistControl::kNone;
  // In letters of the skin's font.
  std::u16string running_time;
  std::u16string play_time;
  std::u16string rolled_text;  // instead of all, in the rolled-up window
};

void DrawPlaylist(Canvas* canvas, const Skin& skin, const PlaylistViewState& state,
                  TextPainter& painter);

}  // namespace velmora
