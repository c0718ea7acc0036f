// Feature 9.
#pragma once

#include "base/sync/lock.h"
#include "effects/effects_state.h"
#include "effects/stages.h"
#include "kelvo/effects_processor.h"

namespace kelvo {

class FixedPointEffects final : public EffectsProcessor {
 public:
  // `platform` is borrowed; it must outlive this.
  explicit FixedPointEffects(EffectsPlatform& platform) noexcept;
  ~FixedPointEffects();

  void Destroy(uint32_t flags) noexcept override;
  void SetBassMode(int32_t mode) noexcept override;
  void ProcessBass(int16_t** samples, int32_t bytes) noexcept override;
  void EnableEqualizer(int32_t enabled) noexcept override;
  void SetEqualizer(int32_t preamp, const int32_t* bands) noexcept override;
  int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override;

 private:
  EffectsState state_;  // directly behind the table of operations
  // Guards the state, but for the enabled flag and the bass mode with its gains: the host writes
  // them without waiting.
  Lock lock_;

  EffectsPlatform& platform_;
  EqualizerPass pass_;
};

}  // namespace kelvo
