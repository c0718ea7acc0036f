// The latest block of audio, kept for the host's visualisation.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/sync/lock.h"
#include "kelvo/wma_input.h"

namespace kelvo {

// One thread stores while another reads.
class AudioTap {
 public:
  static constexpr uint32_t kBytes = 0x40000;
  static constexpr uint32_t kCapacity = kBytes / sizeof(int16_t);

  // Allocates the buffer; without memory the tap stores nothing and reads fail.
  AudioTap() noexcept;
  ~AudioTap() { FreeBuffer(); }
  AudioTap(const AudioTap&) = delete;
  AudioTap& operator=(const AudioTap&) = delete;

  // Replaces what is stored by the first of every two samples of a block, as many as fit. An odd
  // last byte counts for nothing. A null block keeps the stored samples, to be read anew.
  void Store(const int16_t* samples, uint32_t bytes) noexcept;

  // The next samples, padded with zeros; false, with nothing written, when the last read reached
  // beyond the end, or without a destination.
  bool Read(int16_t* destination) noexcept;

  void FreeBuffer() noexcept;  // early; as if there had been no memory

 private:
  Lock lock_;  // guards the rest
  int16_t* buffer_;
  uint32_t count_ = 0;     // samples stored
  uint32_t position_ = 0;  // of the next read; may lie behind the end
};

}  // namespace kelvo
