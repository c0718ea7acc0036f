// The host's AudioOutput: plays a block as soon as it is queued.
#pragma once

#include <stdint.h>

#include <functional>
#include <vector>

#include "process.h"

namespace bench {

class HostOutput {
 public:
  explicit HostOutput(Process& process);

  uint32_t object() const { return object_; }
  // Everything queued since the last reset.
  const std::vector<uint8_t>& pcm() const { return pcm_; }
  uint32_t PlayedFrames() const;
  // Called with the address and length of every block before it is queued.
  void OnWrite(std::function<void(uint32_t, uint32_t)> action) { on_write_ = std::move(action); }

 private:
  void Open(Process& process);
  void Write(uint32_t header);

  Process& process_;
  uint32_t buffer_bytes_ = 0, channels_ = 1;
  std::vector<uint32_t> headers_;
  size_t next_ = 0;
  std::vector<uint8_t> pcm_;
  std::function<void(uint32_t, uint32_t)> on_write_;
  uint32_t object_;
};

}  // namespace bench
