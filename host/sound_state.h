#pragma once

#include <kelvo/effects_processor.h>
#include <stdint.h>

#include <algorithm>

namespace velmora {

constexpr size_t kEqualizerBands = 10;
constexpr uint8_t kLastSlider = 27;
constexpr uint8_t kMaxBass = 4;

// What the user wants the effects to do; sliders as the effects take them.
struct EqualizerState {
  bool on = false;
  // 0 strongest boost, 13 leaves the level, 27 strongest cut: with the bands in the middle the
  // equalizer makes tones up to 17 dB louder, and only with that cut no full-scale one is clipped.
  uint8_t preamp = 27;
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

// What waveOutSetVolume takes (the left level in the low 16 bits, the right in the high) for a
// volume of 0 to 100 and a balance of -100 (left) to 100 (right). The level grows with the square
// of the volume, as loudness is heard; 100 in the middle leaves the sound as it is. Portable.
inline uint32_t DeviceVolume(int volume, int balance) {
  const uint32_t v = static_cast<uint32_t>(std::clamp(volume, 0, 100));
  const int b = std::clamp(balance, -100, 100);
  const uint32_t level = v * v * 0xFFFF / 10000;
  const uint32_t left = b > 0 ? level * (100 - b) / 100 : level;
  const uint32_t right = b < 0 ? level * (100 + b) / 100 : level;
  return left | right << 16;
}

}  // namespace velmora
