#include "pocketpc/coredll/volume.h"

#include "base/memory/array.h"
#include "base/sync/lock.h"
#include "pocketpc/coredll/winmm.h"

namespace kelvo {
namespace {

Lock devices_lock;  // guards the next three
Array<HWAVEOUT> devices;
DWORD current = kFullVolume;
bool chosen = false;  // somebody has set it

}  // namespace

DWORD GetVolume() noexcept {
  LockGuard guard(devices_lock);
  return current;
}

void SetVolume(DWORD volume) noexcept {
  LockGuard guard(devices_lock);
  current = volume;
  chosen = true;
  for (HWAVEOUT device : devices) CallWinmm(&Winmm::set_volume, device, volume);
}

void AddSystemDevice(HWAVEOUT device) noexcept {
  LockGuard guard(devices_lock);
  // One that cannot be remembered keeps the volume that it begins with.
  static_cast<void>(devices.Append(device));
  if (chosen) CallWinmm(&Winmm::set_volume, device, current);
}

void RemoveSystemDevice(HWAVEOUT device) noexcept {
  LockGuard guard(devices_lock);
  for (size_t i = 0; i < devices.size(); ++i) {
    if (devices[i] == device) devices.RemoveAt(i--);
  }
}

}  // namespace kelvo
