// Records begin with their size. The device refuses sizes that it does not know; the desktop knows
// more of them.
#pragma once

#include <stdint.h>

namespace bridge {

// The function takes records; does nothing for one that takes none.
void WatchRecords(uint32_t function, const char* name);
// Before such a function is called with these arguments. A size that the device does not know ends
// the run.
void CheckRecords(uint32_t function, const uint32_t* words);

}  // namespace bridge
