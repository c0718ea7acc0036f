#pragma once

#include <stdint.h>

namespace velmora {

// What waveOutSetVolume takes (the left level in the low 16 bits, the right in the high) for a
// volume of 0 to 100 and a balance of -100 (left) to 100 (right). The level grows with the square
// of the volume, as loudness is heard; 100 in the middle leaves the sound as it is. Portable.
uint32_t DeviceVolume(int volume, int balance);

}  // namespace velmora
