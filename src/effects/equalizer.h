#pragma once

#include <stdint.h>

#include "effects/equalizer_bands.h"

namespace kelvo {

// Preamplifier and ten-band equalizer. Not locked: one thread at a time.
class Equalizer {
 public:
  enum class Loop { kFastest, kBandByBand };
  explicit Equalizer(Loop loop = Loop::kFastest) noexcept : loop_(loop) {}

  // Slider positions: 0 is the strongest boost, 27 the strongest cut. The only floating point is
  // here. The filters keep ringing through the change.
  void Set(int32_t preamp, const int32_t (&sliders)[kBands]) noexcept;

  // In place, two channels interleaved.
  void Process(int16_t* samples, uint32_t frames) noexcept;

  int32_t gain_q14(int band) const noexcept { return bands_.gains[band]; }
  // For external processing.
  int32_t gain_q28(int band) const noexcept { return gains_q28_[band]; }
  bool is_flat() const noexcept { return flat_; }  // all ten sliders in the middle
  int32_t preamp_index() const noexcept { return preamp_index_; }

 private:
  EqualizerBands bands_;
  EqualizerPass pass_;  // keeps the last two inputs between passes
  int32_t gains_q28_[kBands] = {};
  int32_t preamp_index_ = 14;  // 0 to 27; the level is (index + 2) / 16
  bool flat_ = false;
  bool narrow_gains_ = true;
  Loop loop_;
};

}  // namespace kelvo
