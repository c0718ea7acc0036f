#pragma once

#include <windows.h>

namespace velmora {

// The keys that work in all of the player's windows, as their commands; null without memory.
HACCEL CreateShortcuts();

}  // namespace velmora
