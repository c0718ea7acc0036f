#pragma once

#include <limits.h>
#include <stdint.h>

#include <algorithm>

namespace velmora {

// Of a place in a file; bookmarks may hold any number.
inline uint32_t ToMilliseconds(int seconds) {
  return static_cast<uint32_t>(std::clamp(seconds, 0, INT_MAX / 1000)) * 1000;
}

}  // namespace velmora
