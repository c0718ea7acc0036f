// The C heap of the emulated program. New blocks hold rubbish, freed ones other rubbish; a block
// that is freed twice or never was one ends the run.
#pragma once

#include <stdint.h>

#include <map>

#include "machine.h"

namespace bench {

class GuestHeap {
 public:
  explicit GuestHeap(Machine& machine);

  uint32_t Take(uint32_t bytes);  // 0 when memory is out
  uint32_t TakeZeroed(uint32_t bytes);
  uint32_t Resize(uint32_t block, uint32_t bytes);
  void Give(uint32_t block);

  // The n-th request from now on (0 is the next) and all later ones fail; negative: none.
  void FailFrom(int64_t request) { fail_from_ = request; }
  uint64_t requests() const { return requests_; }
  uint32_t blocks() const { return static_cast<uint32_t>(used_.size()); }
  uint32_t peak_bytes() const { return peak_bytes_; }

 private:
  Machine& machine_;
  std::map<uint32_t, uint32_t> used_;  // address, requested size
  std::map<uint32_t, uint32_t> free_;  // address, size
  uint32_t bytes_ = 0;
  uint32_t peak_bytes_ = 0;
  uint64_t requests_ = 0;
  int64_t fail_from_ = -1;
};

}  // namespace bench
