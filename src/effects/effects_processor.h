// Feature 9.
#pragma once

#include "base/sync/lock.h"
#include "base/sync/shared_word.h"
#include "effects/bass.h"
#include "effects/equalizer.h"
#include "effects/external_library.h"
#include "kelvo/effects_processor.h"

namespace kelvo {

class FixedPointEffects final : public EffectsProcessor {
 public:
  // `platform` is borrowed; it must outlive this.
  explicit FixedPointEffects(EffectsPlatform& platform) noexcept : external_(platform) {}

  void Destroy(uint32_t flags) noexcept override;
  void SetBassMode(int32_t mode) noexcept override;
  void ProcessBass(int16_t** samples, int32_t bytes) noexcept override;
  void EnableEqualizer(int32_t enabled) noexcept override;
  void SetEqualizer(int32_t preamp, const int32_t* bands) noexcept override;
  int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override;

  // For external processing. Neither takes the lock.
  const Equalizer& equalizer() const noexcept { return equalizer_; }
  BassGains bass_gains() const noexcept {
    return {static_cast<int32_t>(gain_a_), static_cast<int32_t>(gain_b_)};
  }

 private:
  // Written by the host without waiting, read once a block.
  SharedWord enabled_{1};
  SharedWord mode_{0};
  SharedWord gain_a_{0};
  SharedWord gain_b_{0};

  Lock lock_;  // guards the two stages below
  Equalizer equalizer_;
  Bass bass_;

  ExternalLibrary external_;
};

}  // namespace kelvo
