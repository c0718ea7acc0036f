// Golden vectors of feature 9: settings, made-up sound, and what must come out, as hashes. Whoever
// can call the object can check it, on any processor.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "kelvo/effects_processor.h"

namespace kelvo::tool {

// What is set before a block, and the block. -1 for what stays as it is.
struct EffectsStep {
  int32_t preamp;  // -1: the bands stay too
  int8_t bands[10];
  int32_t enabled;
  int32_t bass_mode;
  char signal;  // 'n'oise, 's'ilence, s'q'uare at full scale, 'i'mpulse, 't'riangle
  int32_t bytes;
  uint32_t input, output;  // FNV-1a, 32 bits, over the block's bytes before and after
};

extern const EffectsStep kEffectsSteps[];
extern const size_t kEffectsStepCount;

constexpr int32_t kMostStepBytes = 4096;

// Runs the steps in order over a new object: the equalizer, then the bass stage. Returns how many
// blocks came out as they must; *first_wrong is the first that did not, or kEffectsStepCount.
size_t CheckEffects(EffectsProcessor& effects, size_t* first_wrong) noexcept;

// The library's object: out of the named Kelvo.dll, or linked in where no library can be loaded
// (then `path` must be null). Null, with a message, when there is none.
EffectsProcessor* LoadEffects(const wchar_t* path) noexcept;

}  // namespace kelvo::tool
