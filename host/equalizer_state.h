#pragma once

#include <kelvo/effects_processor.h>
#include <stdint.h>

namespace velmora {

constexpr size_t kEqualizerBands = 10;
constexpr uint8_t kLastSlider = 27;
constexpr uint8_t kMaxBass = 4;

// What the user wants the effects to do; sliders as the effects take them.
struct EqualizerState {
  bool on = false;
  uint8_t preamp = 13;  // 0 strongest boost, 13 leaves the level, 27 strongest cut
  uint8_t bands[kEqualizerBands] = {14, 14, 14, 14, 14, 14, 14, 14, 14, 14};  // 14 is the middle
  uint8_t bass = 0;  // 0 off to 4, on or not
};

// The equalizer starts switched on, with an offset on every sample and a quarter of the level:
// apply a state before the first sound.
inline void Apply(const EqualizerState& state, kelvo::EffectsProcessor& effects) {
  int32_t bands[kEqualizerBands];
  for (size_t i = 0; i < kEqualizerBands; ++i) bands[i] = state.bands[i];
  effects.SetEqualizer(state.preamp, bands);
  effects.EnableEqualizer(state.on);
  effects.SetBassMode(state.bass);
}

}  // namespace velmora
