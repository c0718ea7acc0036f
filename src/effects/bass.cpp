#include "effects/stages.h"

namespace kelvo {
namespace {

// Calls `action(resonator, memory)` for each.
template <class Action>
void ForEach(EffectsState& state, BassPass& pass, Action action) noexcept {
  for (int c = 0; c < kChannels; ++c) {
    for (int stage = 0; stage < kBassStages; ++stage) {
      action(state.bass[c][stage], pass.memory[c][stage]);
    }
  }
}

}  // namespace

// The last frame is a pass of its own: rings hold three frames, a pass knows the two before it.
void RunBass(EffectsState& state, int32_t gain, int16_t* samples, uint32_t frames) noexcept {
  RingPositions& at = state.bass_positions;
  BassPass pass;
  pass.numbers = state.bass_table[0];
  pass.gain = gain;
  ForEach(state, pass, [&](Resonator& r, BassPass::Memory& m) {
    m = {r.in[at.one_back], r.in[at.two_back], r.out[at.one_back], r.out[at.two_back]};
  });

  const uint32_t last = frames - 1;
  for (uint32_t left = last; left > 0; left -= static_cast<uint32_t>(pass.frames)) {
    pass.frames = NextPass(left);
    RunBassStages(pass, samples);
    samples += pass.frames * kChannels;
  }
  at.Advance(last);
  ForEach(state, pass, [&](Resonator& r, BassPass::Memory& m) {
    r.in[at.one_back] = m.newer_in;
    r.in[at.two_back] = m.older_in;
    r.out[at.one_back] = m.newer_out;
    r.out[at.two_back] = m.older_out;
  });

  pass.frames = 1;
  RunBassStages(pass, samples);
  ForEach(state, pass, [&](Resonator& r, BassPass::Memory& m) {
    r.in[at.now] = m.newer_in;
    r.out[at.now] = m.newer_out;
  });
  at.Advance(1);
}

}  // namespace kelvo
