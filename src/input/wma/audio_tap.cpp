#include "input/wma/audio_tap.h"

#include <string.h>

#include "base/memory/heap.h"

namespace kelvo {

AudioTap::AudioTap() noexcept : buffer_(static_cast<int16_t*>(HeapAllocate(kBytes))) {}

void AudioTap::FreeBuffer() noexcept {
  LockGuard guard(lock_);
  HeapFree(buffer_);
  buffer_ = nullptr;
}

void AudioTap::Store(const int16_t* samples, uint32_t bytes) noexcept {
  LockGuard guard(lock_);
  if (samples) {
    count_ = 0;
    const uint32_t available = buffer_ ? bytes / 2 : 0;
    for (uint32_t i = 0; i < available && count_ < kCapacity; i += 2) {
      buffer_[count_++] = samples[i];
    }
  }
  position_ = 0;
}

bool AudioTap::Read(int16_t* destination) noexcept {
  LockGuard guard(lock_);
  if (!destination || !buffer_ || position_ > count_) return false;
  const uint32_t left = count_ - position_;
  const uint32_t copied = left < kVisualisationSamples ? left : kVisualisationSamples;
  memset(destination, 0, kVisualisationSamples * sizeof(int16_t));
  memcpy(destination, buffer_ + position_, copied * sizeof(int16_t));
  position_ += kVisualisationSamples;
  return true;
}

}  // namespace kelvo
