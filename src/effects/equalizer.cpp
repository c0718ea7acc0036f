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

}  // namespace

void Equalizer::Set(int32_t preamp, const int32_t (&sliders)[kBands]) noexcept {
  flat_ = true;
  narrow_gains_ = true;
  for (int b = 0; b < kBands; ++b) {
    const float gain = GainOf(sliders[b]);
    bands_.gains[b] = ToFixedPoint(gain, 16384.0f);
    gains_q28_[b] = ToFixedPoint(gain, 268435456.0f);
    flat_ &= sliders[b] == kMiddleSlider;
    narrow_gains_ &= IsNarrowGain(bands_.gains[b]);
  }
  preamp_index_ = preamp < 0 ? kLastSlider : preamp > kLastSlider ? 0 : kLastSlider - preamp;
}

void Equalizer::Process(int16_t* samples, uint32_t frames) noexcept {
  const bool side_by_side = kVectorsPay && loop_ == Loop::kFastest && narrow_gains_;
  const int32_t level = preamp_index_ + 2;  // Q4; 16 leaves a sample as it is
  constexpr int kBefore = 2 * kChannels;
  while (frames > 0) {
    pass_.frames = frames < kPassFrames ? static_cast<int>(frames) : kPassFrames;
    const int values = pass_.frames * kChannels;
    for (int i = 0; i < values; ++i) {
      const int32_t input = level * samples[i] >> 4;
      pass_.difference[i] = input - pass_.input[i];
      pass_.input[kBefore + i] = input;
    }
    if (side_by_side) {
      RunBandsSideBySide(bands_, pass_, samples);
    } else {
      RunBandByBand(bands_, pass_, samples);
    }
    memmove(pass_.input, pass_.input + values, kBefore * sizeof(pass_.input[0]));
    samples += values;
    frames -= static_cast<uint32_t>(pass_.frames);
  }
}

}  // namespace kelvo
