#include "effects/fixed_point.h"
#include "effects/stages.h"

namespace kelvo {
namespace {

// Widens what a multiplication of two Q28 numbers makes; one instruction on the device.
constexpr int64_t Product(int32_t a, int32_t b) noexcept {
  return static_cast<int64_t>(a) * b;
}

constexpr int32_t FromQ28(int64_t value) noexcept {
  return static_cast<int32_t>(value >> 28);
}

// What a pass knows of a resonator: inputs and outputs one and two frames back.
struct Memory {
  int32_t newer_in, older_in;
  int32_t newer_out, older_out;
};

// `source(frame)` gives an input; `sink(frame, input, output)` takes the output times `gain`.
template <class Source, class Sink>
void RunStage(const ResonatorCoefficients& numbers, Memory& memory, int frames, int32_t gain,
              Source source, Sink sink) noexcept {
  const int32_t minus_c0 = -numbers.c0, c1 = numbers.c1, c2 = numbers.c2;
  Memory m = memory;
  // The new input and output replace the older ones.
  const auto step = [&](int f, int32_t& older_in, int32_t& older_out, int32_t newer_out) {
    const int32_t in = source(f);
    const int32_t difference = WrapSubtract(in, older_in);
    older_in = in;
    older_out =
        FromQ28(Product(c1, difference) + Product(minus_c0, older_out) + Product(c2, newer_out));
    sink(f, in, FromQ28(Product(older_out, gain)));
  };
  // Two frames a round, so that old and new values change roles without being moved.
  int f = 0;
  for (; f + 1 < frames; f += 2) {
    step(f, m.older_in, m.older_out, m.newer_out);
    step(f + 1, m.newer_in, m.newer_out, m.older_out);
  }
  if (f < frames) {
    step(f, m.older_in, m.older_out, m.newer_out);
    m = {m.older_in, m.newer_in, m.older_out, m.newer_out};
  }
  memory = m;
}

using Memories = Memory[kChannels][kBassStages];

void RunPass(const ResonatorCoefficients& numbers, Memories& memories, int32_t gain,
             int16_t* samples, int frames) noexcept {
  int32_t wet[kPassFrames];
  for (int c = 0; c < kChannels; ++c) {
    int16_t* channel = samples + c;
    RunStage(
        numbers, memories[c][0], frames, gain, [=](int f) { return channel[f * kChannels] * 2048; },
        [&](int f, int32_t, int32_t out) { wet[f] = out; });
    RunStage(
        numbers, memories[c][1], frames, gain, [&](int f) { return wet[f]; },
        [=](int f, int32_t in, int32_t out) {
          const int32_t dry = channel[f * kChannels] * 2048;
          const int32_t mixed = WrapAdd(WrapAdd(out, in), dry);
          channel[f * kChannels] = ClampToSample(mixed >> 12);
        });
  }
}

// Calls `action(resonator, memory)` for each.
template <class Action>
void ForEach(EffectsState& state, Memories& memories, Action action) noexcept {
  for (int c = 0; c < kChannels; ++c) {
    for (int stage = 0; stage < kBassStages; ++stage) {
      action(state.bass[c][stage], memories[c][stage]);
    }
  }
}

}  // namespace

// The last frame is a pass of its own: rings hold three frames, a pass knows the two before it.
void RunBass(EffectsState& state, int32_t gain, int16_t* samples, uint32_t frames) noexcept {
  RingPositions& at = state.bass_positions;
  Memories memories;
  ForEach(state, memories, [&](Resonator& r, Memory& m) {
    m = {r.in[at.one_back], r.in[at.two_back], r.out[at.one_back], r.out[at.two_back]};
  });

  const uint32_t last = frames - 1;
  for (uint32_t left = last; left > 0;) {
    const uint32_t count = left < kPassFrames ? left : kPassFrames;
    RunPass(state.bass_table[0], memories, gain, samples, static_cast<int>(count));
    samples += count * kChannels;
    left -= count;
  }
  at.Advance(last);
  ForEach(state, memories, [&](Resonator& r, Memory& m) {
    r.in[at.one_back] = m.newer_in;
    r.in[at.two_back] = m.older_in;
    r.out[at.one_back] = m.newer_out;
    r.out[at.two_back] = m.older_out;
  });

  RunPass(state.bass_table[0], memories, gain, samples, 1);
  ForEach(state, memories, [&](Resonator& r, Memory& m) {
    r.in[at.now] = m.newer_in;
    r.out[at.now] = m.newer_out;
  });
  at.Advance(1);
}

}  // namespace kelvo
