// One command of the program: what follows its name on the command line, and the exit code.
#pragma once

#include <string>
#include <vector>

#include "host/library.h"

namespace velmora {

using Words = std::vector<std::wstring>;
using Command = int (*)(const Library& library, const Words& words);

// The player with its windows (player_command.cpp).
int PlayerCommand(const Library& library, const Words& words);
// Plays files (play_options.cpp).
int PlayCommand(const Library& library, const Words& words);
// What files say about themselves (info_command.cpp).
int InfoCommand(const Library& library, const Words& words);
// Bookmarks (bookmarks_command.cpp).
int BookmarksCommand(const Library& library, const Words& words);
// The catalog, of a folder (catalog_command.cpp).
int CatalogCommand(const Library& library, const Words& words);
// Equalizer presets (presets_command.cpp).
int PresetsCommand(const Library& library, const Words& words);
// Skin files (skin_command.cpp).
int SkinCommand(const Library& library, const Words& words);
// Goes on where `play` was interrupted (play_options.cpp).
int ResumeCommand(const Library& library, const Words& words);

}  // namespace velmora
