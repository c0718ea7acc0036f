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
// Plays files on the console, one after the other (play_command.cpp): 0 when all were played, 1
// when one could not be, 2 when the user interrupted.
int PlayCommand(const Library& library, const Words& words);
// What files say about themselves (info_command.cpp).
int InfoCommand(const Library& library, const Words& words);

}  // namespace velmora
