#include "tools/kelvotool/effects_check.h"

namespace kelvo::tool {
namespace {

// Of samples as the device has them, the low byte first.
uint32_t Hash(const int16_t* samples, int32_t count) noexcept {
  uint32_t hash = 2166136261u;
  for (int32_t i = 0; i < count; ++i) {
    const auto sample = static_cast<uint16_t>(samples[i]);
    hash = (hash ^ (sample & 0xFF)) * 16777619u;
    hash = (hash ^ (sample >> 8)) * 16777619u;
  }
  return hash;
}

class Signals {
 public:
  int16_t Next(char signal, int32_t at) noexcept {
    switch (signal) {
      case 'n':
        random_ = random_ * 1664525u + 1013904223u;
        return static_cast<int16_t>(random_ >> 16);
      case 'q':
        return at / 37 % 2 ? INT16_MAX : INT16_MIN;
      case 'i':
        return at < 2 ? INT16_MAX : 0;
      case 't':  // the channels run against each other
        return static_cast<int16_t>((at & 1 ? -1 : 1) *
                                    (at % 400 < 200 ? at % 200 : 200 - at % 200) * 100);
      default:
        return 0;
    }
  }

 private:
  uint32_t random_ = 1;
};

}  // namespace

size_t CheckEffects(EffectsProcessor& effects, size_t* first_wrong) noexcept {
  Signals signals;
  size_t right = 0;
  *first_wrong = kEffectsStepCount;
  for (size_t step = 0; step < kEffectsStepCount; ++step) {
    const EffectsStep& s = kEffectsSteps[step];
    int32_t bands[10];
    for (int k = 0; k < 10; ++k) bands[k] = s.bands[k];
    if (s.preamp >= 0) effects.SetEqualizer(s.preamp, bands);
    if (s.enabled >= 0) effects.EnableEqualizer(s.enabled);
    if (s.bass_mode >= 0) effects.SetBassMode(s.bass_mode);

    static int16_t block[kMostStepBytes / 2];       // too large for a device's stack
    const int32_t samples = (s.bytes + 3) / 4 * 2;  // of whole frames
    for (int32_t i = 0; i < samples; ++i) block[i] = signals.Next(s.signal, i);
    const uint32_t input = Hash(block, samples);
    int16_t* data = block;
    effects.ProcessEqualizer(&data, s.bytes);
    effects.ProcessBass(&data, s.bytes);
    if (input == s.input && Hash(block, samples) == s.output) {
      ++right;
    } else if (*first_wrong == kEffectsStepCount) {
      *first_wrong = step;
    }
  }
  return right;
}

}  // namespace kelvo::tool
