#include "effects/effects_processor.h"

#include <string.h>

#include "base/memory/heap.h"

namespace kelvo {
namespace {

// Half frames are rounded up, as the interface warns. `bytes` is 2 or more.
constexpr uint32_t FramesIn(int32_t bytes) noexcept {
  return static_cast<uint32_t>((bytes / 2 - 1) / 2 + 1);
}

bool IsEmpty(int16_t* const* samples, int32_t bytes) noexcept {
  return bytes < 2 || !samples || !*samples;
}

}  // namespace

// A static object gets flag 0, if anything, and its destructor runs afterwards all the same: until
// then the lock stays usable.
void FixedPointEffects::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) {
    HeapDelete(this);
    return;
  }
  external_.Unload();
}

void FixedPointEffects::SetBassMode(int32_t mode) noexcept {
  if (mode >= 0 && mode < kBassModes) {
    gain_a_ = static_cast<uint32_t>(kBassGains[mode].a);
    gain_b_ = static_cast<uint32_t>(kBassGains[mode].b);
  }
  mode_ = static_cast<uint32_t>(mode);
}

void FixedPointEffects::ProcessBass(int16_t** samples, int32_t bytes) noexcept {
  if (mode_ == 0) return;
  if (const ExternalBass process = external_.bass()) {
    process(this, samples, bytes);
    return;
  }
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return;
  bass_.Process(*samples, FramesIn(bytes), static_cast<int32_t>(gain_a_));
}

void FixedPointEffects::EnableEqualizer(int32_t enabled) noexcept {
  enabled_ = static_cast<uint32_t>(enabled);
}

void FixedPointEffects::SetEqualizer(int32_t preamp, const int32_t* bands) noexcept {
  if (!bands) return;
  int32_t sliders[kBands];
  memcpy(sliders, bands, sizeof(sliders));
  LockGuard guard(lock_);
  equalizer_.Set(preamp, sliders);
}

int32_t FixedPointEffects::ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept {
  if (const ExternalEqualizer process = external_.equalizer()) return process(this, samples, bytes);
  if (enabled_ == 0) return 0;
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return bytes;
  equalizer_.Process(*samples, FramesIn(bytes));
  return bytes;
}

}  // namespace kelvo
