#include "host/player/spectrum.h"

#include <math.h>

#include <algorithm>

namespace velmora {
namespace {

constexpr float kBarsPerSecond = 30;  // of height
constexpr float kPeaksPerSecond = 12;
constexpr float kHoldMs = 500;
constexpr float kDecibelsPerStep = 4;
constexpr size_t kSamplesPerPoint = 4;

constexpr size_t kFirstBin = 1;
constexpr size_t kEndBin = 240;  // 20 kHz of 44.1

float MeanOf(const int16_t (&samples)[kPictureSamples]) {
  int32_t sum = 0;
  for (const int16_t sample : samples) sum += sample;
  return static_cast<float>(sum) / kPictureSamples;
}

// The first bin of each bar, and behind the last: a constant ratio apart, at least one bin.
struct BarEdges {
  size_t at[kSpectrumBars + 1];
  BarEdges() {
    at[0] = kFirstBin;
    for (size_t i = 1; i <= kSpectrumBars; ++i) {
      const double share = static_cast<double>(i) / kSpectrumBars;
      const double edge = kFirstBin * pow(1.0 * kEndBin / kFirstBin, share);
      at[i] = std::max(at[i - 1] + 1, static_cast<size_t>(edge + 0.5));
    }
  }
};

// A sine at full scale is kPictureHeight high.
float HeightOf(float power) {
  constexpr float kFullScale = 32768.0f * kPictureSamples / 4;  // the window takes half
  const float decibels = 10 * log10f(std::max(power, 1e-6f)) - 20 * log10f(kFullScale);
  return std::clamp(kPictureHeight + decibels / kDecibelsPerStep, 0.0f,
                    static_cast<float>(kPictureHeight));
}

}  // namespace

void Spectrum::Take(const int16_t (&samples)[kPictureSamples]) {
  static const BarEdges edges;
  const float mean = MeanOf(samples);
  std::complex<float> values[kPictureSamples];
  for (size_t i = 0; i < kPictureSamples; ++i) {
    const float phase = static_cast<float>(2 * kPi) * static_cast<float>(i) / kPictureSamples;
    values[i] = (samples[i] - mean) * (0.5f - 0.5f * cosf(phase));
  }
  Transform(values, kPictureSamples);
  for (size_t i = 0; i < kSpectrumBars; ++i) {
    float power = 0;
    for (size_t bin = edges.at[i]; bin < edges.at[i + 1]; ++bin) {
      power = std::max(power, std::norm(values[bin]));
    }
    bars_[i] = std::max(bars_[i], HeightOf(power));
    if (bars_[i] >= peaks_[i].height) peaks_[i] = {bars_[i], kHoldMs};
  }
}

void Spectrum::Fall(uint32_t milliseconds) {
  const float passed = static_cast<float>(milliseconds);
  for (size_t i = 0; i < kSpectrumBars; ++i) {
    bars_[i] = std::max(0.0f, bars_[i] - passed * kBarsPerSecond / 1000);
    Peak& peak = peaks_[i];
    const float falling = std::max(0.0f, passed - peak.hold_ms);
    peak.hold_ms = std::max(0.0f, peak.hold_ms - passed);
    peak.height = std::max(bars_[i], peak.height - falling * kPeaksPerSecond / 1000);
  }
}

void DrawWave(const int16_t (&samples)[kPictureSamples], uint8_t* points, size_t count) {
  const float mean = MeanOf(samples);
  size_t first = 0;
  for (size_t i = 1; i < kPictureSamples - count * kSamplesPerPoint; ++i) {
    if (samples[i - 1] < mean && samples[i] >= mean) {
      first = i;
      break;
    }
  }
  constexpr float kHalf = kPictureHeight / 2.0f;
  for (size_t i = 0; i < count; ++i) {
    const size_t at = std::min(first + i * kSamplesPerPoint, kPictureSamples - 1);
    const float height = kHalf + (samples[at] - mean) * kHalf / 32768;
    points[i] =
        static_cast<uint8_t>(std::clamp(height + 0.5f, 0.0f, static_cast<float>(kPictureHeight)));
  }
}

}  // namespace velmora
