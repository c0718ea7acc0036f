#include "effects/fixed_point.h"
#include "effects/stages.h"

namespace kelvo {
namespace {

constexpr int64_t Product(int32_t a, int32_t b) noexcept {
  return static_cast<int64_t>(a) * b;
}

constexpr int32_t FromQ28(int64_t value) noexcept {
  return static_cast<int32_t>(value >> 28);
}

// `source(frame)` gives an input; `sink(frame, input, output)` takes the output times the gain.
template <class Source, class Sink>
void RunStage(const BassPass& pass, BassPass::Memory& memory, Source source, Sink sink) noexcept {
  BassPass::Memory m = memory;
  for (int f = 0; f < pass.frames; ++f) {
    const int32_t in = source(f);
    const int32_t out =
        FromQ28(Product(pass.numbers.c1, WrapSubtract(in, m.older_in)) -
                Product(pass.numbers.c0, m.older_out) + Product(pass.numbers.c2, m.newer_out));
    m = {in, m.newer_in, out, m.newer_out};
    sink(f, in, FromQ28(Product(out, pass.gain)));
  }
  memory = m;
}

}  // namespace

void RunBassByStage(BassPass& pass, int16_t* samples) noexcept {
  int32_t wet[kPassFrames];
  for (int c = 0; c < kChannels; ++c) {
    int16_t* channel = samples + c;
    RunStage(
        pass, pass.memory[c][0], [=](int f) { return channel[f * kChannels] * 2048; },
        [&](int f, int32_t, int32_t out) { wet[f] = out; });
    RunStage(
        pass, pass.memory[c][1], [&](int f) { return wet[f]; },
        [=](int f, int32_t in, int32_t out) {
          const int32_t dry = channel[f * kChannels] * 2048;
          const int32_t mixed = WrapAdd(WrapAdd(out, in), dry);
          channel[f * kChannels] = ClampToSample(mixed >> 12);
        });
  }
}

}  // namespace kelvo
