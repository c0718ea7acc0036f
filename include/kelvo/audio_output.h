// The host's audio device, as an input plug-in drives it.
//
// Generated from tools/contract/audio_output.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

// A buffer of PCM, with the layout of the system's wave header (WAVEHDR). The plug-in fills `data`,
// then sets `length_bytes` and `valid_bytes` to what it filled; it touches nothing else.
struct OutputBuffer {
  char* data;
  uint32_t length_bytes;
  uint32_t valid_bytes;
  uintptr_t user;
  uint32_t flags;
  uint32_t loops;
  OutputBuffer* next;
  uintptr_t reserved;
};
static_assert(sizeof(void*) != 4 || sizeof(OutputBuffer) == 32);

// Implemented by the host. The decoding thread calls slots 4, 5, 6, 8, 9, 11 and 13; meanwhile the
// host's own thread makes the plug-in call slots 9, 11 and 12. An implementation must bear both at
// once, and slots 9, 11 and 12 also on a device that is closed or was never opened: a seek or a
// stop may reset it though it does not play, a position is asked for at any time, and a pause may
// come just as the decoding thread has closed it. The library calls no other slot and never deletes
// the object.
class AudioOutput {
 public:
  virtual void Reserved0() noexcept {}
  virtual void Reserved1() noexcept {}
  virtual void Reserved2() noexcept {}
  virtual void Reserved3() noexcept {}

  // Slot 4. Prepares the device and a ring of `buffer_count` (8) buffers of `buffer_bytes` (4096,
  // 8192 or 16384) for PCM of `channels` channels at `sample_rate` Hz with `bits_per_sample` (16)
  // bits. Non-zero on success. Close follows in either case, unless a seek comes while the last
  // buffers drain (input_plugin.h, slot 9).
  virtual int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
                       uint32_t sample_rate, uint32_t bits_per_sample) noexcept = 0;

  // Slot 5. Stops and releases the device. Also called after an Open that failed.
  virtual void Close() noexcept = 0;

  // Slot 6. Hands out a free buffer, waiting until one is free or Reset releases the wait. Never
  // null: the caller does not test it.
  virtual OutputBuffer* GetBuffer() noexcept = 0;

  virtual void Reserved7() noexcept {}

  // Slot 8. Queues a buffer; `valid_bytes` in it says how much to play: at the end of a file, or
  // when it ends where it was sought to, also 0. `unused_bytes` is the room left in it. The result
  // is ignored.
  virtual int32_t Write(OutputBuffer* buffer, uint32_t unused_bytes) noexcept = 0;

  // Slot 9. 1 pauses the device, 0 lets it run.
  virtual void Pause(uint32_t pause) noexcept = 0;

  virtual void Reserved10() noexcept {}

  // Slot 11. Discards every queued buffer, returns them to the free pool, wakes a caller waiting in
  // GetBuffer, and restarts PlayedSamples at 0. Does nothing else on a closed device.
  virtual void Reset() noexcept = 0;

  // Slot 12. Sample frames played since Open or the last Reset. The two words are those the host
  // gave to GetPositionMs.
  virtual uint32_t PlayedSamples(HostWord a, HostWord b) noexcept = 0;

  // Slot 13. Non-zero once every queued buffer has been played.
  virtual int32_t Drained() noexcept = 0;

 protected:
  ~AudioOutput() = default;
};

}  // namespace kelvo
