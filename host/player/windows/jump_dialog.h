#pragma once

#include <windows.h>

#include <vector>

#include "host/player/track_list.h"

namespace velmora {

// Lets the user look for a track by words of its title or its file's name; the list shows what has
// them all. `current` is shown first. kNoTrack when the user declines.
size_t AskForTrack(HWND parent, const std::vector<Track>& tracks, size_t current);

}  // namespace velmora
