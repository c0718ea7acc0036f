// Window messages that the library posts to windows of the host.
#pragma once

#include <stdint.h>

namespace kelvo {

// Playback came to its end, or failed; both parameters are 0. Posted to the window given to
// SetNotifyWindow. WM_USER + 1544.
constexpr uint32_t kMessageEndOfPlayback = 0x0A08;

}  // namespace kelvo
