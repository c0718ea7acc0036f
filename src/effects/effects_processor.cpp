#include "effects/effects_processor.h"

#include <string.h>

#include "base/memory/heap.h"
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

// Words that one thread writes and another reads without the lock, in the order written here.
int32_t Read(const int32_t& word) noexcept {
  return __atomic_load_n(&word, __ATOMIC_ACQUIRE);
}

void Write(int32_t& word, int32_t value) noexcept {
  __atomic_store_n(&word, value, __ATOMIC_RELEASE);
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
  if (mode == 0) Write(state_.bass_mode, 0);
  if (mode >= 0 && mode < kBassModes) {
    Write(state_.bass_gain_a, kBassGains[mode].a);
    Write(state_.bass_gain_b, kBassGains[mode].b);
  }
  if (mode != 0) Write(state_.bass_mode, mode);
}

void FixedPointEffects::ProcessBass(int16_t** samples, int32_t bytes) noexcept {
  if (Read(state_.bass_mode) == 0) return;
  if (const ExternalBass process = state_.external_bass) {
    process(this, samples, bytes);
    return;
  }
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return;
  const int32_t gain = Read(state_.bass_gain_a);
  if (Read(state_.bass_mode) == 0) return;  // switched off meanwhile: the gain may be gone already
  RunBass(state_, gain, *samples, FramesIn(bytes));
}

void FixedPointEffects::EnableEqualizer(int32_t enabled) noexcept {
  Write(state_.enabled, enabled);
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
  if (Read(state_.enabled) == 0) return 0;
  LockGuard guard(lock_);
  if (IsEmpty(samples, bytes)) return bytes;
  RunEqualizer(state_, pass_, RunBands, *samples, FramesIn(bytes));
  return bytes;
}

}  // namespace kelvo
