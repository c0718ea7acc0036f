#include "effects/bass.h"

#include "effects/fixed_point.h"

namespace kelvo {
namespace {

// Widens what a multiplication of two Q28 numbers makes; one instruction on the device.
constexpr int64_t Product(int32_t a, int32_t b) noexcept {
  return static_cast<int64_t>(a) * b;
}

constexpr int32_t FromQ28(int64_t value) noexcept {
  return static_cast<int32_t>(value >> 28);
}

constexpr ResonatorCoefficients kResonance = kBassCoefficients[0];

}  // namespace

template <class Source, class Sink>
void Bass::Run(Resonator& resonator, int frames, int32_t gain, Source source, Sink sink) noexcept {
  Resonator r = resonator;
  // The new input and output replace the older ones.
  const auto step = [&](int f, int32_t& older_in, int32_t& older_out, int32_t newer_out) {
    const int32_t in = source(f);
    const int32_t difference = WrapSubtract(in, older_in);
    older_in = in;
    older_out = FromQ28(Product(kResonance.c1, difference) + Product(-kResonance.c0, older_out) +
                        Product(kResonance.c2, newer_out));
    sink(f, in, FromQ28(Product(older_out, gain)));
  };
  // Two frames a round, so that old and new values change roles without being moved.
  int f = 0;
  for (; f + 1 < frames; f += 2) {
    step(f, r.older_in, r.older_out, r.newer_out);
    step(f + 1, r.newer_in, r.newer_out, r.older_out);
  }
  if (f < frames) {
    step(f, r.older_in, r.older_out, r.newer_out);
    r = {r.older_in, r.newer_in, r.older_out, r.newer_out};
  }
  resonator = r;
}

void Bass::Process(int16_t* samples, uint32_t frames, int32_t gain) noexcept {
  while (frames > 0) {
    const int count = frames < kPassFrames ? static_cast<int>(frames) : kPassFrames;
    for (int c = 0; c < kChannels; ++c) {
      int16_t* channel = samples + c;
      int32_t* wet = wet_;
      Run(
          first_[c], count, gain, [=](int f) { return channel[f * kChannels] * 2048; },
          [=](int f, int32_t, int32_t out) { wet[f] = out; });
      Run(
          second_[c], count, gain, [=](int f) { return wet[f]; },
          [=](int f, int32_t in, int32_t out) {
            const int32_t dry = channel[f * kChannels] * 2048;
            const int32_t mixed = WrapAdd(WrapAdd(out, in), dry);
            channel[f * kChannels] = ClampToSample(mixed >> 12);
          });
    }
    samples += count * kChannels;
    frames -= static_cast<uint32_t>(count);
  }
}

}  // namespace kelvo
