#include "effects/effects_processor.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/sync/shared_word.h"
#include "effects/stages.h"

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

FixedPointEffects::FixedPointEffects(EffectsPlatform& platform) noexcept : platform_(platform) {
  LoadExternalLibrary(platform_, state_);
}

FixedPointEffects::~FixedPointEffects() {
  UnloadExternalLibrary(platform_, state_);
}

// A static object gets flag 0, if anything, and its destructor runs afterwards all the same: until
// then the lock stays usable.
void FixedPointEffects::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) {
    HeapDelete(this);
    return;
  }
  UnloadExternalLibrary(platform_, state_);
}

// The stage is off before its gains are gone, and on when they are there.
void FixedPointEffects::SetBassMode(int32_t mode) noexcept {
  if (mode == 0) StoreRelease(state_.bass_mode, 0);
  if (mode >= 0 && mode < kBassModes) {
    StoreRelease(state_.bass_gain_a, kBassGains[mode].a);
    StoreRelease(state_.bass_gain_b, kBassGains[mode].b);
  }
  if (mode != 0) StoreRelease(state_.bass_mode, mode);
}

void FixedPointEffects::ProcessBass(int16_t** samples, int32_t bytes) noexcept {
  if (LoadAcquire(state_.bass_mode) == 0) return;
  if (const ExternalBass process = state_.external_bass) {
    process(this, samples, bytes);
    return;
  }
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return;
  const int32_t gain = LoadAcquire(state_.bass_gain_a);
  // Switched off meanwhile, the gain may be gone already.
  if (LoadAcquire(state_.bass_mode) == 0) return;
  RunBass(state_, gain, *samples, FramesIn(bytes));
}

void FixedPointEffects::EnableEqualizer(int32_t enabled) noexcept {
  StoreRelease(state_.enabled, enabled);
}

void FixedPointEffects::SetEqualizer(int32_t preamp, const int32_t* bands) noexcept {
  if (!bands) return;
  int32_t sliders[kBands];
  memcpy(sliders, bands, sizeof(sliders));
  LockGuard guard(lock_);
  kelvo::SetEqualizer(state_, preamp, sliders);
}

int32_t FixedPointEffects::ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept {
  if (const ExternalEqualizer process = state_.external_equalizer) {
    return process(this, samples, bytes);
  }
  if (LoadAcquire(state_.enabled) == 0) return 0;
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return bytes;
  RunEqualizer(state_, pass_, RunBands, *samples, FramesIn(bytes));
  return bytes;
}

}  // namespace kelvo
