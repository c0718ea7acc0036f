// The volume: one for all sound of the process, as the device has one. It is also that of players
// whose devices the caller does not know.
#pragma once

#include <windows.h>

#include <mmsystem.h>
#include <stdint.h>

namespace kelvo {

// The left level in the low 16 bits, the right one in the high.
constexpr DWORD kFullVolume = 0xFFFFFFFF;

DWORD GetVolume() noexcept;
// Also of the sound system's devices that are open.
void SetVolume(DWORD volume) noexcept;

// Those get the volume while they are open.
void AddSystemDevice(HWAVEOUT device) noexcept;
void RemoveSystemDevice(HWAVEOUT device) noexcept;

inline int16_t AtVolume(int16_t sample, DWORD volume, bool right) noexcept {
  const int32_t level = right ? HIWORD(volume) : LOWORD(volume);
  return static_cast<int16_t>(static_cast<int64_t>(sample) * level / 0xFFFF);
}

}  // namespace kelvo
