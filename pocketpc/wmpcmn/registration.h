#pragma once

#include <windows.h>

namespace kelvo {

// Enters this DLL, by its path, as the in-process server of the player's class, for any apartment;
// needs the right to write the machine's classes.
bool RegisterPlayer() noexcept;
bool UnregisterPlayer() noexcept;  // also true when it was not there

}  // namespace kelvo
