// The host's AudioOutput: a ring of buffers played at the sample rate by the emulator's clock. It
// starts once every buffer is queued, or when it is told to run.
#pragma once

#include <stdint.h>

#include <deque>
#include <functional>
#include <vector>

#include "process.h"

namespace bench {

class HostOutput {
 public:
  explicit HostOutput(Process& process);

  uint32_t object() const { return object_; }
  bool open() const { return open_; }
  uint32_t buffer_bytes() const { return buffer_bytes_; }
  uint32_t channels() const { return channels_; }
  uint32_t sample_rate() const { return sample_rate_; }
  // Everything queued since the last reset.
  const std::vector<uint8_t>& pcm() const { return pcm_; }
  uint32_t PlayedFrames();
  uint32_t underruns() const { return underruns_; }
  void FailNextOpen() { fail_open_ = true; }
  // Called with the address and length of every block before it is queued.
  void OnWrite(std::function<void(uint32_t, uint32_t)> action) { on_write_ = std::move(action); }

 private:
  struct Queued {
    uint32_t header;
    uint32_t frames;
  };
  uint32_t Open();
  void Close();
  uint32_t GetBuffer();
  void Write(uint32_t header);
  void Pause(bool pause);
  void Reset();
  void Play();  // up to now
  uint64_t HeadEnd() const;

  Process& process_;
  bool open_ = false;
  bool fail_open_ = false;
  uint32_t buffer_bytes_ = 0, channels_ = 0, sample_rate_ = 0;
  std::vector<uint32_t> headers_;
  std::vector<uint32_t> free_;
  std::deque<Queued> queue_;
  bool running_ = false;
  bool paused_ = false;  // by the library: full buffers do not start it
  bool starved_ = false;
  uint64_t head_began_ = 0;  // microseconds, while running
  uint32_t played_ = 0;
  uint32_t underruns_ = 0;
  std::vector<uint8_t> pcm_;
  std::function<void(uint32_t, uint32_t)> on_write_;
  uint32_t object_;
};

}  // namespace bench
