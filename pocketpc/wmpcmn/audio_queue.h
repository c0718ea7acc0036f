#pragma once

#include <windows.h>

#include <mmsystem.h>
#include <stdint.h>

#include "base/memory/array.h"
#include "base/windows/unique_handle.h"

namespace kelvo {

// A few blocks on their way to the sound device, 16-bit stereo. One thread.
class AudioQueue {
 public:
  struct Block {
    Array<int16_t> samples;
    uint64_t end_time = 0;  // the media time, 100 ns units, at which the block is over
    WAVEHDR header = {};
  };

  AudioQueue() noexcept : changed_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
  ~AudioQueue() { Close(); }

  // Keeps an open device when it has that rate already.
  [[nodiscard]] bool Open(uint32_t rate) noexcept;
  void Close() noexcept;

  // Signalled when a block is over.
  HANDLE changed() const noexcept { return changed_.get(); }

  // A block to fill and to give to Play; null while all are queued.
  Block* FreeBlock() noexcept;
  [[nodiscard]] bool Play(Block* block) noexcept;
  // Takes back the first block that is over; null when there is none.
  const Block* NextDone() noexcept;
  bool empty() const noexcept { return queued_ == 0; }
  // Drops what is not played yet.
  void Reset() noexcept;

 private:
  static constexpr size_t kBlocks = 6;

  UniqueObject changed_;
  HWAVEOUT device_ = nullptr;
  uint32_t rate_ = 0;
  Block blocks_[kBlocks];
  size_t first_ = 0;  // the block that was queued first
  size_t queued_ = 0;
};

}  // namespace kelvo
