#include "host/player/sample_tap.h"

#include <algorithm>

namespace velmora {

int32_t SampleTap::Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
                        uint32_t sample_rate, uint32_t bits_per_sample) noexcept {
  const int32_t opened =
      next_.Open(buffer_count, buffer_bytes, channels, sample_rate, bits_per_sample);
  Guard guard(lock_);
  channels_ = std::max(channels, 1u);
  // All buffers may wait; what was just heard is wanted too.
  ring_.assign(buffer_count * (buffer_bytes / 2 / channels_) + 2 * kPictureSamples, 0);
  written_ = 0;
  shown_ = 0;
  written_any_ = false;
  opened_ = opened != 0;
  return opened;
}

int32_t SampleTap::Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept {
  {
    Guard guard(lock_);
    const int16_t* samples = reinterpret_cast<const int16_t*>(buffer->data);
    const uint32_t frames = buffer->valid_bytes / 2 / channels_;
    size_t at = written_ % ring_.size();
    for (uint32_t i = 0; i < frames; ++i) {
      ring_[at] = samples[i * channels_];
      if (++at == ring_.size()) at = 0;
    }
    written_ += frames;
    written_any_ = written_any_ || frames > 0;
  }
  return next_.Write(buffer, unused_bytes);
}

void SampleTap::Reset() noexcept {
  next_.Reset();
  Guard guard(lock_);
  written_ = 0;
  shown_ = 0;
}

bool SampleTap::Samples(int16_t (&samples)[kPictureSamples]) {
  const uint32_t heard = next_.PlayedSamples(0, 0);
  Guard guard(lock_);
  if (heard == shown_ || ring_.empty()) return false;
  shown_ = heard;
  // Forward from what is heard; near the end of what is there, back from it.
  const uint32_t end = std::min<uint32_t>(heard + kPictureSamples, written_);
  const uint32_t count = std::min<uint32_t>(end, kPictureSamples);
  std::fill_n(samples, kPictureSamples - count, int16_t{0});
  for (uint32_t i = 0; i < count; ++i) {
    samples[kPictureSamples - count + i] = ring_[(end - count + i) % ring_.size()];
  }
  return true;
}

bool SampleTap::opened() {
  Guard guard(lock_);
  return opened_;
}

bool SampleTap::written_any() {
  Guard guard(lock_);
  return written_any_;
}

}  // namespace velmora
