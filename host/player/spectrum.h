// The moving picture of the sound: bars with peaks, or a line. Portable.
#pragma once

#include <complex>

#include <stddef.h>
#include <stdint.h>

namespace velmora {

constexpr double kPi = 3.14159265358979323846;

// The discrete Fourier transform, in place; `count` is a power of two. Portable.
void Transform(std::complex<float>* values, size_t count);

constexpr size_t kPictureSamples = 512;  // of one channel
constexpr size_t kSpectrumBars = 19;
constexpr uint8_t kPictureHeight = 15;  // the highest bar, peak or point; 0 is the lowest

class Spectrum {
 public:
  // Bars rise at once to what the samples hold. A constant offset in them is not seen.
  void Take(const int16_t (&samples)[kPictureSamples]);
  // Time passes: bars fall; peaks stay a while, then fall too.
  void Fall(uint32_t milliseconds);
  // The lowest frequencies are on the left; evenly spaced for the ear.
  uint8_t bar(size_t index) const { return static_cast<uint8_t>(bars_[index]); }
  uint8_t peak(size_t index) const { return static_cast<uint8_t>(peaks_[index].height); }

 private:
  struct Peak {
    float height = 0;
    float hold_ms = 0;
  };
  float bars_[kSpectrumBars] = {};
  Peak peaks_[kSpectrumBars];
};

// `count` points, 2 to 128, of the sound's wave, each 0 to kPictureHeight; silence lies in the
// middle. Begins where the wave rises through its middle, so that a steady tone stands still.
void DrawWave(const int16_t (&samples)[kPictureSamples], uint8_t* points, size_t count);

}  // namespace velmora
