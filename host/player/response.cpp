#include "host/player/response.h"

#include <math.h>

#include <algorithm>

#include "effects/stages.h"
#include "host/player/spectrum.h"

namespace velmora {
namespace {

constexpr uint8_t kUnityPreamp = 13;
constexpr double kRate = 44100;
constexpr double kLowest = 20, kHighest = 20000;
constexpr size_t kPeriod = 8192;    // a sound repeats: every tone fits a whole number of times
constexpr size_t kSettling = 4096;  // until the slowest filter swings evenly
constexpr size_t kFrames = kSettling + kPeriod;
constexpr size_t kStereo = 2;
constexpr size_t kTones = 96;
constexpr size_t kSounds = 8;     // each has every eighth tone
constexpr float kLoudest = 8000;  // of a whole sound
constexpr float kSoftest = 500;

// For the curve of one band: the sliders whose gains are nearest to nothing, and to the half.
constexpr uint8_t kQuietSlider = 22, kTestSlider = 10;

using Sound = std::vector<float>;
using Samples = std::vector<int16_t>;
using Curve = std::vector<std::complex<float>>;

// Tones in (nearly) equal ratios, each in a bin of the transform of its own.
std::vector<size_t> ToneBins() {
  std::vector<size_t> bins;
  for (size_t i = 0; i < kTones; ++i) {
    const double share = static_cast<double>(i) / (kTones - 1);
    const double hertz = kLowest * pow(kHighest / kLowest, share);
    const size_t bin = static_cast<size_t>(hertz * kPeriod / kRate + 0.5);
    if (bins.empty() || bin > bins.back()) bins.push_back(bin);
  }
  return bins;
}

// One period, its peak 1. The low tones are louder: the low filters' rounding would drown them. Few
// tones are in one sound for the same reason. The phases are in no pattern, which would make peaks.
Sound MakeSound(const std::vector<size_t>& bins, size_t number) {
  std::vector<std::complex<float>> tones(kPeriod);
  for (size_t i = number; i < bins.size(); i += kSounds) {
    const double phase = static_cast<double>(i * i);
    const double loudness = pow(static_cast<double>(bins[i]), -0.4);
    tones[bins[i]] = {static_cast<float>(loudness * cos(phase)),
                      static_cast<float>(loudness * sin(phase))};
  }
  Transform(tones.data(), kPeriod);
  float peak = 0;
  for (const auto& sample : tones) peak = std::max(peak, fabsf(sample.real()));
  Sound sound;
  for (const auto& sample : tones) sound.push_back(sample.real() / peak);
  return sound;
}

std::vector<Sound> MakeSounds(const std::vector<size_t>& bins) {
  std::vector<Sound> sounds;
  for (size_t i = 0; i < kSounds; ++i) sounds.push_back(MakeSound(bins, i));
  return sounds;
}

void RunEqualizer(const uint8_t (&sliders)[kEqualizerBands], Samples* samples) {
  kelvo::EffectsState state;
  kelvo::EqualizerPass pass;
  int32_t bands[kEqualizerBands];
  std::copy_n(sliders, kEqualizerBands, bands);
  kelvo::SetEqualizer(state, kUnityPreamp, bands);
  kelvo::RunEqualizer(state, pass, kelvo::RunBands, samples->data(), kFrames);
}

// What has a maximum was, or may have been, cut off.
bool IsClipped(int16_t sample) {
  return sample == 32767 || sample == -32768;
}

// `effect` changes a sound in each channel. As loud as is not clipped.
template <class Effect>
Samples RunThrough(const Sound* sounds, Effect effect, float* level) {
  for (*level = kLoudest;; *level /= 2) {
    Samples samples(kFrames * kStereo);
    for (size_t i = 0; i < samples.size(); ++i) {
      const float sample = sounds[i % kStereo][i / kStereo % kPeriod];
      samples[i] = static_cast<int16_t>(lrintf(sample * *level));
    }
    effect(&samples);
    samples.erase(samples.begin(), samples.begin() + kSettling * kStereo);
    const bool clipped = std::any_of(samples.begin(), samples.end(), IsClipped);
    if (!clipped || *level <= kSoftest) return samples;
  }
}

// Constant offsets are no tone.
template <class Effect>
Curve MeasureEffect(const std::vector<Sound>& sounds, const std::vector<size_t>& bins,
                    Effect effect) {
  Curve curve(bins.size());
  for (size_t first = 0; first < kSounds; first += kStereo) {
    float level;
    const Samples samples = RunThrough(&sounds[first], effect, &level);
    for (size_t channel = 0; channel < kStereo; ++channel) {
      const Sound& sound = sounds[first + channel];
      // One transform for two real sounds: what went in, and as imaginary part what came out.
      Curve both(kPeriod);
      for (size_t i = 0; i < kPeriod; ++i) {
        both[i] = {sound[i] * level, static_cast<float>(samples[i * kStereo + channel])};
      }
      Transform(both.data(), kPeriod);
      for (size_t i = first + channel; i < bins.size(); i += kSounds) {
        const auto value = both[bins[i]], mirrored = std::conj(both[kPeriod - bins[i]]);
        curve[i] = (value - mirrored) / (value + mirrored) * std::complex<float>(0, -1);
      }
    }
  }
  return curve;
}

float GainOf(uint8_t slider) {
  kelvo::EffectsState state;
  int32_t bands[kEqualizerBands];
  std::fill_n(bands, kEqualizerBands, slider);
  kelvo::SetEqualizer(state, kUnityPreamp, bands);
  return static_cast<float>(state.gains_q14[0]) / 16384;
}

float LevelOf(uint8_t preamp) {
  return static_cast<float>(kLastSlider - preamp + 2) / 16;
}

}  // namespace

ResponseMeter::ResponseMeter() : bins_(ToneBins()) {
  const std::vector<Sound> sounds = MakeSounds(bins_);
  const auto measure_sliders = [&](const uint8_t(&sliders)[kEqualizerBands]) {
    return MeasureEffect(sounds, bins_, [&](Samples* s) { RunEqualizer(sliders, s); });
  };
  uint8_t sliders[kEqualizerBands];
  std::fill_n(sliders, kEqualizerBands, kQuietSlider);
  const Curve quiet = measure_sliders(sliders);
  dry_ = quiet;
  for (size_t band = 0; band < kEqualizerBands; ++band) {
    sliders[band] = kTestSlider;
    bands_[band] = measure_sliders(sliders);
    sliders[band] = kQuietSlider;
    for (size_t i = 0; i < bins_.size(); ++i) {
      bands_[band][i] = (bands_[band][i] - quiet[i]) / (GainOf(kTestSlider) - GainOf(kQuietSlider));
      dry_[i] -= bands_[band][i] * GainOf(kQuietSlider);
    }
  }
  for (uint8_t mode = 1; mode <= kMaxBass; ++mode) {
    bass_[mode] = MeasureEffect(sounds, bins_, [&](Samples* samples) {
      kelvo::EffectsState state;
      kelvo::RunBass(state, kelvo::kBassGains[mode].a, samples->data(), kFrames);
    });
  }
  EqualizerState middle;
  middle.on = true;
  middle_ = Combine(middle);
  float power = 0;
  for (const auto& tone : middle_) power += std::norm(tone);
  middle_power_ = power / static_cast<float>(middle_.size());
}

ResponseMeter::Curve ResponseMeter::Combine(const EqualizerState& state) const {
  Curve curve = dry_;
  for (size_t i = 0; i < curve.size(); ++i) {
    for (size_t band = 0; band < kEqualizerBands; ++band) {
      curve[i] += bands_[band][i] * GainOf(std::min(state.bands[band], kLastSlider));
    }
    curve[i] *= LevelOf(std::min(state.preamp, kLastSlider));
    if (!state.on) curve[i] = 1;
    if (state.bass > 0) curve[i] *= bass_[std::min(state.bass, kMaxBass)][i];
  }
  return curve;
}

void ResponseMeter::Measure(const EqualizerState& state, float* decibels, size_t count) const {
  const Curve curve = Combine(state);
  const auto decibels_of = [&](size_t tone) {
    const float flat = state.on ? std::norm(middle_[tone]) / middle_power_ : 1;
    return 10 * log10f((std::norm(curve[tone]) + 1e-6f) / (flat + 1e-6f));
  };
  size_t right = 1;  // the tones on both sides of the frequency
  for (size_t i = 0; i < count; ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(count - 1);
    const double bin = kLowest * pow(kHighest / kLowest, share) * kPeriod / kRate;
    while (right + 1 < bins_.size() && static_cast<double>(bins_[right]) < bin) ++right;
    const double from = log(static_cast<double>(bins_[right - 1]));
    const double to = log(static_cast<double>(bins_[right]));
    const float part = std::clamp(static_cast<float>((log(bin) - from) / (to - from)), 0.0f, 1.0f);
    decibels[i] = decibels_of(right - 1) * (1 - part) + decibels_of(right) * part;
  }
}

}  // namespace velmora
