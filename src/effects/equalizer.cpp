#include "effects/equalizer.h"

#include <string.h>

namespace kelvo {
namespace {

constexpr int32_t kMiddleSlider = 14;
constexpr int32_t kLastSlider = 27;

// Single precision on purpose: the gains have its rounding.
float GainOf(int32_t slider) noexcept {
  const double steps = static_cast<double>(kLastSlider) - slider;
  return static_cast<float>(steps * 0.044444444444444446 - 0.2);
}

// Toward zero. A slider far outside its range gives a number that 32 bits cannot hold; its low
// bits are kept, which is the same on every processor, as converting directly would not be.
int32_t ToFixedPoint(float gain, float one) noexcept {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<int64_t>(gain * one)));
}

void RunPass(const EffectsState& state, EqualizerPass& pass, BandsLoop loop, int16_t* samples,
             int frames) noexcept {
  constexpr int kBefore = 2 * kChannels;
  const int32_t level = state.preamp_index + 2;  // Q4; 16 leaves a sample as it is
  const int values = frames * kChannels;
  for (int i = 0; i < values; ++i) {
    const int32_t input = level * samples[i] >> 4;
    pass.difference[i] = input - pass.input[i];
    pass.input[kBefore + i] = input;
  }
  pass.frames = frames;
  loop(state, pass, samples);
  memmove(pass.input, pass.input + values, kBefore * sizeof(pass.input[0]));
}

// Calls `action(resonator, band, channel)` for each.
template <class State, class Action>
void ForEachResonator(State& state, Action action) noexcept {
  for (int b = 0; b < kBands; ++b) {
    for (int c = 0; c < kChannels; ++c) action(state.equalizer[b][c], b, c);
  }
}

}  // namespace

BandsLoop FastestLoop(const EffectsState& state) noexcept {
#if defined(__SSE2__)
  if (AreGainsNarrow(state)) return RunBandsSideBySide;
#endif
  static_cast<void>(state);
  return RunBandByBand;
}

void SetEqualizer(EffectsState& state, int32_t preamp, const int32_t (&sliders)[kBands]) noexcept {
  state.flat = 1;
  for (int b = 0; b < kBands; ++b) {
    const float gain = GainOf(sliders[b]);
    state.gains_q14[b] = ToFixedPoint(gain, 16384.0f);
    state.gains_q28[b] = ToFixedPoint(gain, 268435456.0f);
    if (sliders[b] != kMiddleSlider) state.flat = 0;
  }
  state.preamp_index = preamp < 0 ? kLastSlider : preamp > kLastSlider ? 0 : kLastSlider - preamp;
}

// The last frame is a pass of its own: rings hold three frames, a pass knows the two before it.
void RunEqualizer(EffectsState& state, EqualizerPass& pass, BandsLoop loop, int16_t* samples,
                  uint32_t frames) noexcept {
  RingPositions& at = state.equalizer_positions;
  int32_t* const older_input = pass.input;
  int32_t* const newer_input = pass.input + kChannels;
  ForEachResonator(state, [&](const Resonator& resonator, int b, int c) {
    newer_input[c] = resonator.in[at.one_back];
    older_input[c] = resonator.in[at.two_back];
    pass.newer[b][c] = resonator.out[at.one_back];
    pass.older[b][c] = resonator.out[at.two_back];
  });

  const uint32_t last = frames - 1;
  for (uint32_t left = last; left > 0;) {
    constexpr uint32_t kMost = kPassFrames;
    const uint32_t count = left < kMost ? left : kMost;
    RunPass(state, pass, loop, samples, static_cast<int>(count));
    samples += count * kChannels;
    left -= count;
  }
  at.Advance(last);
  ForEachResonator(state, [&](Resonator& resonator, int b, int c) {
    resonator.in[at.one_back] = newer_input[c];
    resonator.in[at.two_back] = older_input[c];
    resonator.out[at.one_back] = pass.newer[b][c];
    resonator.out[at.two_back] = pass.older[b][c];
  });

  RunPass(state, pass, loop, samples, 1);
  ForEachResonator(state, [&](Resonator& resonator, int b, int c) {
    resonator.in[at.now] = newer_input[c];
    resonator.out[at.now] = pass.newer[b][c];
  });
  at.Advance(1);
}

}  // namespace kelvo
