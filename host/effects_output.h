#pragma once

#include <kelvo/audio_output.h>
#include <kelvo/effects_processor.h>

namespace velmora {

// Runs what is written through the effects and hands it on. They are made for two channels: other
// sound is left alone.
class EffectsOutput final : public kelvo::AudioOutput {
 public:
  // Both are borrowed.
  EffectsOutput(kelvo::AudioOutput& next, kelvo::EffectsProcessor& effects)
      : next_(next), effects_(effects) {}

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override {
    stereo_ = channels == 2;
    return next_.Open(buffer_count, buffer_bytes, channels, sample_rate, bits_per_sample);
  }
  void Close() noexcept override { next_.Close(); }
  kelvo::OutputBuffer* GetBuffer() noexcept override { return next_.GetBuffer(); }
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept override {
    if (stereo_) {
      int16_t* samples = reinterpret_cast<int16_t*>(buffer->data);
      const int32_t bytes = static_cast<int32_t>(buffer->valid_bytes);
      effects_.ProcessEqualizer(&samples, bytes);
      effects_.ProcessBass(&samples, bytes);
    }
    return next_.Write(buffer, unused_bytes);
  }
  void Pause(uint32_t pause) noexcept override { next_.Pause(pause); }
  void Reset() noexcept override { next_.Reset(); }
  uint32_t PlayedSamples(kelvo::HostWord a, kelvo::HostWord b) noexcept override {
    return next_.PlayedSamples(a, b);
  }
  int32_t Drained() noexcept override { return next_.Drained(); }

 private:
  kelvo::AudioOutput& next_;
  kelvo::EffectsProcessor& effects_;
  bool stereo_ = false;
};

}  // namespace velmora
