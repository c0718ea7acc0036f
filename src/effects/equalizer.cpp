#include <string.h>

#include "effects/fixed_point.h"
#include "effects/stages.h"

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

// 64 bits hold the bands' sum for all gains, 32 bits for those of slider positions and far beyond.
bool AreGainsNarrow(const EffectsState& state) noexcept {
  for (const int32_t gain : state.gains_q14) {
    if (gain < -0x100000 || gain > 0x100000) return false;
  }
  return true;
}

// The input adds a quarter of itself, and there is a constant offset.
template <class Sum>
void Finish(const EqualizerPass& pass, int16_t* samples) noexcept {
  const auto finish = [](int64_t sum, int32_t input) {
    return ClampToSample(static_cast<Sum>(sum >> 12) + (input >> 2) + 12500);
  };
  const int32_t* input = pass.input + 2 * kChannels;
  for (const BandsFrame* frame = pass.work; frame != pass.work + pass.frames; ++frame) {
    samples[0] = finish(frame->sum[0], input[0]);
    samples[1] = finish(frame->sum[1], input[1]);
    samples += kChannels;
    input += kChannels;
  }
}

class Block {
 public:
  Block(const EffectsState& state, EqualizerPass& pass, BandsLoop loop) noexcept
      : state_(state),
        pass_(pass),
        loop_(loop),
        finish_(AreGainsNarrow(state) ? Finish<int32_t> : Finish<int64_t>) {}

  void RunPass(int16_t* samples, int frames) noexcept {
    const int32_t level = state_.preamp_index + 2;  // Q4; 16 leaves a sample as it is
    int32_t newer[kChannels], older[kChannels];
    memcpy(older, pass_.input, sizeof(older));
    memcpy(newer, pass_.input + kChannels, sizeof(newer));
    const int16_t* sample = samples;
    int32_t* input = pass_.input + 2 * kChannels;
    for (BandsFrame* frame = pass_.work; frame != pass_.work + frames; ++frame) {
      const auto start = [&](int c) {
        const int32_t in = level * sample[c] >> 4;
        frame->difference[c] = in - older[c];
        older[c] = newer[c];
        newer[c] = input[c] = in;
      };
      start(0);
      start(1);
      sample += kChannels;
      input += kChannels;
    }
    pass_.frames = frames;
    loop_(state_, pass_);
    finish_(pass_, samples);
    memcpy(pass_.input, older, sizeof(older));
    memcpy(pass_.input + kChannels, newer, sizeof(newer));
  }

 private:
  const EffectsState& state_;
  EqualizerPass& pass_;
  const BandsLoop loop_;
  void (*const finish_)(const EqualizerPass&, int16_t*);
};

// Calls `action(resonator, band, channel)` for each.
template <class State, class Action>
void ForEachResonator(State& state, Action action) noexcept {
  for (int b = 0; b < kBands; ++b) {
    for (int c = 0; c < kChannels; ++c) action(state.equalizer[b][c], b, c);
  }
}

}  // namespace

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

  Block block(state, pass, loop);
  const uint32_t last = frames - 1;
  for (uint32_t left = last; left > 0; left -= static_cast<uint32_t>(pass.frames)) {
    block.RunPass(samples, NextPass(left));
    samples += pass.frames * kChannels;
  }
  at.Advance(last);
  ForEachResonator(state, [&](Resonator& resonator, int b, int c) {
    resonator.in[at.one_back] = newer_input[c];
    resonator.in[at.two_back] = older_input[c];
    resonator.out[at.one_back] = pass.newer[b][c];
    resonator.out[at.two_back] = pass.older[b][c];
  });

  block.RunPass(samples, 1);
  ForEachResonator(state, [&](Resonator& resonator, int b, int c) {
    resonator.in[at.now] = newer_input[c];
    resonator.out[at.now] = pass.newer[b][c];
  });
  at.Advance(1);
}

}  // namespace kelvo
