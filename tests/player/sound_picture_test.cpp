// What is drawn of the sound: spectrum, wave, the equalizer's response; and the volume.
#include <gtest/gtest.h>
#include <math.h>

#include <algorithm>
#include <vector>

#include "host/player/response.h"
#include "host/player/spectrum.h"
#include "host/sound_state.h"

namespace velmora {
namespace {

constexpr double kTwoPi = 6.283185307179586;

struct Picture {
  int16_t samples[kPictureSamples];
};

// A sine of `periods` in the picture, around `offset`.
Picture Tone(double periods, double amplitude, double offset = 0) {
  Picture picture;
  for (size_t i = 0; i < kPictureSamples; ++i) {
    const double phase = kTwoPi * periods * static_cast<double>(i) / kPictureSamples;
    picture.samples[i] = static_cast<int16_t>(lrint(offset + amplitude * sin(phase)));
  }
  return picture;
}

size_t HighestBar(const Spectrum& spectrum) {
  size_t highest = 0;
  for (size_t i = 1; i < kSpectrumBars; ++i) {
    if (spectrum.bar(i) > spectrum.bar(highest)) highest = i;
  }
  return highest;
}

TEST(Spectrum, TonesStandWhereTheyBelong) {
  size_t last = 0;
  for (const double periods : {2.0, 4.0, 8.5, 17.0, 40.0, 90.0, 200.0}) {
    SCOPED_TRACE(periods);
    Spectrum spectrum;
    spectrum.Take(Tone(periods, 32767).samples);
    const size_t bar = HighestBar(spectrum);
    EXPECT_GE(spectrum.bar(bar), 14) << "full scale reaches the top";
    EXPECT_GT(bar, last);
    last = bar;
  }
  EXPECT_GE(last, kSpectrumBars - 2) << "the highest tone stands on the right";
}

TEST(Picture, SilenceAndOffsetsAreFlat) {
  for (const double offset : {0.0, 12500.0, -32768.0, 32767.0}) {
    uint8_t points[76];
    DrawWave(Tone(0, 0, offset).samples, points, 76);
    for (const uint8_t point : points) EXPECT_EQ(point, 8) << offset;
    Spectrum spectrum;
    spectrum.Take(Tone(0, 0, offset).samples);
    for (size_t i = 0; i < kSpectrumBars; ++i) {
      EXPECT_EQ(spectrum.bar(i), 0) << offset;
      EXPECT_EQ(spectrum.peak(i), 0) << offset;
    }
  }
}

TEST(Spectrum, SofterIsLower) {
  int last = kPictureHeight + 1;
  for (const double amplitude : {32767.0, 8000.0, 2000.0, 500.0, 100.0}) {
    Spectrum spectrum;
    spectrum.Take(Tone(20, amplitude).samples);
    const int height = spectrum.bar(HighestBar(spectrum));
    EXPECT_LT(height, last) << amplitude;
    last = height;
  }
}

TEST(Spectrum, PeaksStayWhileBarsFallAndFallLater) {
  Spectrum spectrum;
  spectrum.Take(Tone(20, 32767).samples);
  const size_t bar = HighestBar(spectrum);
  const uint8_t top = spectrum.bar(bar);
  spectrum.Fall(200);
  EXPECT_LT(spectrum.bar(bar), top);
  EXPECT_EQ(spectrum.peak(bar), top);
  spectrum.Fall(500);
  EXPECT_LT(spectrum.peak(bar), top);
  EXPECT_GE(spectrum.peak(bar), top - 3);
  spectrum.Fall(60000);
  EXPECT_EQ(spectrum.bar(bar), 0);
  EXPECT_EQ(spectrum.peak(bar), 0);
}

TEST(Wave, LoudTonesUseTheHeightAndStandStill) {
  std::vector<uint8_t> first(76), second(76);
  Picture tone = Tone(8, 32767);
  DrawWave(tone.samples, first.data(), 76);
  EXPECT_EQ(*std::min_element(first.begin(), first.end()), 0);
  EXPECT_EQ(*std::max_element(first.begin(), first.end()), kPictureHeight);
  std::rotate(tone.samples, tone.samples + 37, tone.samples + kPictureSamples);
  DrawWave(tone.samples, second.data(), 76);
  EXPECT_EQ(first, second);
}

constexpr size_t kPoints = 61;  // a decade is twenty points
size_t PointOf(double hertz) {
  return static_cast<size_t>(lrint(log10(hertz / 20) * 20));
}

constexpr float kFlatLouder = 7.66f;  // decibels: the bands in the middle, over all tones

TEST(Response, BandsActWhereTheyAreNamed) {
  const ResponseMeter meter;
  float middle[kPoints];
  meter.Measure(EqualizerState(), middle, kPoints);
  for (const float decibels : middle) EXPECT_EQ(decibels, 0) << "off";
  EqualizerState flat;
  flat.on = true;
  flat.preamp = 13;
  meter.Measure(flat, middle, kPoints);
  for (const float decibels : middle) EXPECT_NEAR(decibels, kFlatLouder, 0.01);

  const double hertz[kEqualizerBands] = {60, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};
  for (size_t band = 0; band < kEqualizerBands; ++band) {
    SCOPED_TRACE(band);
    EqualizerState boost = flat, cut = flat;
    boost.bands[band] = 0;
    cut.bands[band] = 27;
    float up[kPoints], down[kPoints];
    meter.Measure(boost, up, kPoints);
    meter.Measure(cut, down, kPoints);
    const size_t centre = PointOf(hertz[band]);
    EXPECT_GT(*std::max_element(up + centre - 3, up + std::min(centre + 4, kPoints)),
              kFlatLouder + 3.5f);
    EXPECT_LT(*std::min_element(down + centre - 3, down + std::min(centre + 4, kPoints)),
              kFlatLouder - 6.0f);
    const size_t far = band < 5 ? PointOf(15000) : PointOf(40);
    EXPECT_NEAR(up[far], middle[far], 0.7);
    EXPECT_NEAR(down[far], middle[far], 0.7);
  }
}

TEST(Response, PreamplifierAndBass) {
  const ResponseMeter meter;
  const struct {
    const char* name;
    bool on;
    uint8_t preamp, bass;
    double hertz;
    float want, within;
  } cases[] = {
      {"strongest boost: 29/16", true, 0, 0, 1000, 5.17f, 0.01f},
      {"strongest cut: 2/16", true, 27, 0, 1000, -18.06f, 0.01f},
      {"beyond the last slider", true, 200, 0, 1000, -18.06f, 0.01f},
      {"bass halves the rest", false, 13, 4, 5000, -6.02f, 0.1f},
      {"bass beyond the last strength", false, 13, 9, 5000, -6.02f, 0.1f},
      // (2.2 * 2.2 + 2.2 + 1) / 2
      {"and lifts its own", false, 13, 4, 62, 12.1f, 1.0f},
  };
  for (const auto& c : cases) {
    EqualizerState state;
    state.on = c.on;
    state.preamp = c.preamp;
    state.bass = c.bass;
    float decibels[kPoints];
    meter.Measure(state, decibels, kPoints);
    EXPECT_NEAR(decibels[PointOf(c.hertz)], c.want + (c.on ? kFlatLouder : 0), c.within) << c.name;
  }
}

TEST(VolumeLaw, Table) {
  const struct {
    const char* name;
    int volume, balance;
    uint32_t left, right;
  } cases[] = {
      {"full", 100, 0, 0xFFFF, 0xFFFF},
      {"off", 0, 0, 0, 0},
      {"half is a quarter", 50, 0, 0x3FFF, 0x3FFF},
      {"left only", 100, -100, 0xFFFF, 0},
      {"right only", 100, 100, 0, 0xFFFF},
      {"half to the right", 100, 50, 0x7FFF, 0xFFFF},
      {"beyond both ends", 900, -900, 0xFFFF, 0},
      {"below", -5, 0, 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DeviceVolume(c.volume, c.balance), c.left | c.right << 16) << c.name;
  }
}

}  // namespace
}  // namespace velmora
