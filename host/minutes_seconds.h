#pragma once

#include <stdint.h>

namespace velmora {

// "3:07"
struct MinutesSeconds {
  wchar_t text[24];
  explicit MinutesSeconds(int64_t milliseconds);
};

}  // namespace velmora
