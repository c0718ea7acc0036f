#pragma once

#include <stdint.h>

#include "effects/coefficients.h"

namespace kelvo {

// Bass enhancement: a resonator at the bottom of the spectrum, run twice in a row, and its two
// outputs added to half of the input. Not locked: one thread at a time.
class Bass {
 public:
  // In place, two channels interleaved. `gain` is Q28, 0 to 2.2.
  void Process(int16_t* samples, uint32_t frames, int32_t gain) noexcept;

 private:
  static constexpr int kPassFrames = 64;  // even

  // A resonator's memory, Q11 samples: inputs and outputs one and two frames back.
  struct Resonator {
    int32_t newer_in = 0, older_in = 0;
    int32_t newer_out = 0, older_out = 0;
  };
  // `source(frame)` gives an input; `sink(frame, input, output)` takes the output times `gain`.
  template <class Source, class Sink>
  static void Run(Resonator& resonator, int frames, int32_t gain, Source source,
                  Sink sink) noexcept;

  Resonator first_[kChannels];
  Resonator second_[kChannels];
  int32_t wet_[kPassFrames];  // the first resonator's amplified outputs; one channel at a time
};

}  // namespace kelvo
