#include "host/player/volume_law.h"

#include <algorithm>

namespace velmora {

uint32_t DeviceVolume(int volume, int balance) {
  const uint32_t v = static_cast<uint32_t>(std::clamp(volume, 0, 100));
  const int b = std::clamp(balance, -100, 100);
  const uint32_t level = v * v * 0xFFFF / 10000;
  const uint32_t left = b > 0 ? level * (100 - b) / 100 : level;
  const uint32_t right = b < 0 ? level * (100 + b) / 100 : level;
  return left | right << 16;
}

}  // namespace velmora
