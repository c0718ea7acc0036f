#include "host/minutes_seconds.h"

#include <stdio.h>
#include <wchar.h>

namespace velmora {

MinutesSeconds::MinutesSeconds(int64_t milliseconds) {
  const int64_t seconds = milliseconds / 1000;
  _snwprintf(text, 24, L"%ld:%02d", static_cast<long>(seconds / 60),
             static_cast<int>(seconds % 60));
}

}  // namespace velmora
