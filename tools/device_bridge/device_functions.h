// What the device's libraries offer and the desktop's do not, or otherwise.
#pragma once

#include <stdint.h>

namespace bridge {

// The bridge's own function of that name; 0: this machine's will do.
uint32_t DeviceFunction(const char* name);

}  // namespace bridge
