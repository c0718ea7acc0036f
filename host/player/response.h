// What the effects do to the sound, as a curve. Portable.
#pragma once

#include <stddef.h>

#include <complex>
#include <vector>

#include "host/sound_state.h"

namespace velmora {

// Measures once, with effects of its own at 44.1 kHz: what each band and each strength of the bass
// does to sounds of several tones. What they do together follows: they add up, and the
// preamplifier and the bass multiply. (Measured together, strong boosts would be cut off by the
// limits of the samples.)
class ResponseMeter {
 public:
  ResponseMeter();  // takes some hundredths of a second

  // How loud `count` (at least 2) frequencies, from 20 Hz to 20 kHz in equal ratios, come out, in
  // decibels against what goes in. Bands in the middle, which do not do the same to all tones, are
  // drawn as a line at the height of what they do to the level.
  void Measure(const EqualizerState& state, float* decibels, size_t count) const;

 private:
  using Curve = std::vector<std::complex<float>>;  // out against in, one for each tone

  Curve Combine(const EqualizerState& state) const;

  std::vector<size_t> bins_;  // of the tones, in the transform
  Curve dry_;                 // without the bands
  Curve bands_[kEqualizerBands];
  Curve bass_[kMaxBass + 1];  // 0: empty
  Curve middle_;              // the bands in the middle
  float middle_power_ = 1;    // the mean over the tones
};

}  // namespace velmora
