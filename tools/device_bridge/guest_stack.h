// A thread's stack as the device gives it: 64 KB, which come page by page as they are used, each
// only below the one before.
#pragma once

#include <stdint.h>

namespace bridge {

class GuestStack {
 public:
  GuestStack();
  ~GuestStack();
  GuestStack(const GuestStack&) = delete;
  GuestStack& operator=(const GuestStack&) = delete;

  // Where a thread begins: a multiple of 4 and not of 8, as the device promises no more.
  uint32_t top() const;
  // A thread begins anew.
  void Reset();
  // False for a page of something else. The first use of a page that the device would refuse ends
  // the run.
  bool Use(uint32_t page);

 private:
  uint8_t* memory_;
  uint32_t lowest_ = 0;  // page in use
};

}  // namespace bridge
