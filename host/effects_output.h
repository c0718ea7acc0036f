#pragma once

#include <kelvo/audio_output.h>
#include <kelvo/effects_processor.h>

#include <algorithm>
#include <atomic>
#include <vector>

namespace velmora {

// Runs what is written through the effects and hands it on. They are made for two channels: one
// channel takes both ways, more than two are left alone.
class EffectsOutput final : public kelvo::AudioOutput {
 public:
  // Both are borrowed.
  EffectsOutput(kelvo::AudioOutput& next, kelvo::EffectsProcessor& effects)
      : next_(next), effects_(effects) {}

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override {
    channels_ = channels;
    if (channels == 1) both_.resize(buffer_bytes);  // twice as many samples of two bytes
    return next_.Open(buffer_count, buffer_bytes, channels, sample_rate, bits_per_sample);
  }
  void Close() noexcept override { next_.Close(); }
  kelvo::OutputBuffer* GetBuffer() noexcept override { return next_.GetBuffer(); }
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept override {
    int16_t* const samples = reinterpret_cast<int16_t*>(buffer->data);
    if (channels_ == 2) Process(samples, buffer->valid_bytes / 4);
    if (channels_ == 1) ProcessMono(samples, buffer->valid_bytes / 2);
    return next_.Write(buffer, unused_bytes);
  }
  void Pause(uint32_t pause) noexcept override { next_.Pause(pause); }
  void Reset() noexcept override { next_.Reset(); }
  uint32_t PlayedSamples(kelvo::HostWord a, kelvo::HostWord b) noexcept override {
    return next_.PlayedSamples(a, b);
  }
  int32_t Drained() noexcept override { return next_.Drained(); }

  // Any thread: whether the effects have cut samples off since the last call.
  bool TakeClipped() { return clipped_.exchange(false, std::memory_order_relaxed); }

 private:
  void Process(int16_t* samples, uint32_t frames) {
    const int32_t bytes = static_cast<int32_t>(frames * 4);
    const auto before = AtLimits(samples, frames);
    effects_.ProcessEqualizer(&samples, bytes);
    effects_.ProcessBass(&samples, bytes);
    if (AtLimits(samples, frames) > before) clipped_.store(true, std::memory_order_relaxed);
  }
  static std::ptrdiff_t AtLimits(const int16_t* samples, uint32_t frames) {
    return std::count_if(samples, samples + 2 * frames,
                         [](int16_t sample) { return sample == 32767 || sample == -32768; });
  }
  void ProcessMono(int16_t* samples, uint32_t frames) {
    for (uint32_t i = 0; i < frames; ++i) both_[2 * i] = both_[2 * i + 1] = samples[i];
    Process(both_.data(), frames);
    for (uint32_t i = 0; i < frames; ++i) samples[i] = both_[2 * i];
  }

  kelvo::AudioOutput& next_;
  kelvo::EffectsProcessor& effects_;
  uint32_t channels_ = 0;
  std::vector<int16_t> both_;  // one channel, doubled
  std::atomic<bool> clipped_{false};
};

}  // namespace velmora
