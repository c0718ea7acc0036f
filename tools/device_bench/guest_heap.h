// The emulated program's C heap. Nothing is used twice, so that a run is the same each time; what
// is wrong with its use the bridge's heap tells.
#pragma once

#include <stdint.h>

#include <map>

#include "machine.h"

namespace bench {

class GuestHeap {
 public:
  explicit GuestHeap(Machine& machine);

  uint32_t Take(uint32_t bytes);
  uint32_t TakeZeroed(uint32_t bytes) { return Take(bytes); }
  uint32_t Resize(uint32_t block, uint32_t bytes);
  void Give(uint32_t block);

  uint32_t peak_bytes() const { return peak_bytes_; }

 private:
  Machine& machine_;
  std::map<uint32_t, uint32_t> blocks_;  // address, bytes
  uint32_t next_;
  uint32_t bytes_ = 0, peak_bytes_ = 0;
};

}  // namespace bench
