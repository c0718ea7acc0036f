// Makes the n-th request for memory fail.
#pragma once

#include "base/memory/heap.h"

namespace kelvo::test {

// While alive, lets `successes` requests through and fails all later ones (or only the next one).
class HeapFaults {
 public:
  enum class Mode { kOnce, kFromThenOn };
  explicit HeapFaults(long successes, Mode mode = Mode::kOnce) : left_(successes), mode_(mode) {
    SetHeapFaultHook(&HeapFaults::Hook, this);
  }
  ~HeapFaults() { SetHeapFaultHook(nullptr, nullptr); }
  HeapFaults(const HeapFaults&) = delete;
  HeapFaults& operator=(const HeapFaults&) = delete;

  long made() const { return made_; }  // requests
  // False once the sweep has come past the last request: nothing failed any more.
  bool triggered() const { return triggered_; }

 private:
  static bool Hook(void* context) {
    HeapFaults* self = static_cast<HeapFaults*>(context);
    ++self->made_;
    const bool fails = self->left_ == 0 || (self->left_ < 0 && self->mode_ == Mode::kFromThenOn);
    if (self->left_ >= 0) --self->left_;
    self->triggered_ |= fails;
    return fails;
  }

  long made_ = 0;
  long left_;
  Mode mode_;
  bool triggered_ = false;
};

}  // namespace kelvo::test
