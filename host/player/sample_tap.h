#pragma once

#include <kelvo/audio_output.h>

#include <vector>

#include "host/player/spectrum.h"
#include "host/system.h"

namespace velmora {

// Hands what is written on, and keeps the first channel of what waits to be heard: for a picture of
// the sound at the moment when it is heard.
class SampleTap final : public kelvo::AudioOutput {
 public:
  explicit SampleTap(kelvo::AudioOutput& next) : next_(next) {}  // borrowed

  // Any thread. The samples around the place that is heard; false when it has not moved since the
  // last call.
  bool Samples(int16_t (&samples)[kPictureSamples]);
  // Whether the last Open succeeded, and whether anything was written since. Both outlast Close.
  bool opened();
  bool written_any();

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override;
  void Close() noexcept override { next_.Close(); }
  kelvo::OutputBuffer* GetBuffer() noexcept override { return next_.GetBuffer(); }
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept override;
  void Pause(uint32_t pause) noexcept override { next_.Pause(pause); }
  void Reset() noexcept override;
  uint32_t PlayedSamples(kelvo::HostWord a, kelvo::HostWord b) noexcept override {
    return next_.PlayedSamples(a, b);
  }
  int32_t Drained() noexcept override { return next_.Drained(); }

 private:
  kelvo::AudioOutput& next_;

  CriticalSection lock_;  // guards the rest
  std::vector<int16_t> ring_;
  uint32_t channels_ = 0;
  uint32_t written_ = 0;  // frames since Open or Reset
  uint32_t shown_ = 0;    // the place of the last picture
  bool opened_ = false;
  bool written_any_ = false;
};

}  // namespace velmora
