// The few places where the desktop and the device differ: base/windows/desktop/ and
// base/windows/ce/ each implement these.
#pragma once

#include <stdint.h>

namespace kelvo {

// The system's number for one of the device's thread priorities (0 most urgent, 3 normal, 7 idle).
int PlatformPriority(int32_t device_priority) noexcept;

}  // namespace kelvo
