// The two text files of a skin. Both are written by hand and read leniently.
#pragma once

#include <string_view>

#include "host/player/skin/skin.h"

namespace velmora {

// viscolor.txt: lines of red, green, blue, anything; one line a colour. Lines without three numbers
// are skipped, colours that the text lacks stay as they are.
void ReadVisualColours(std::string_view text, Colour (&colours)[kVisualColours]);

// pledit.txt: lines NAME=VALUE, colours as #RRGGBB. What is missing or makes no sense stays.
void ReadPlaylistStyle(std::string_view text, PlaylistStyle* style);

}  // namespace velmora
