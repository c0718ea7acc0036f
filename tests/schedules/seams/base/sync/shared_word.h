// Stands in for src/base/sync/shared_word.h where threads are scheduled by a plan: another thread
// may go on before every access.
#pragma once

#include <stdint.h>

#include "tests/schedules/scheduler.h"

namespace kelvo {

template <class T>
class SharedValue {
 public:
  constexpr SharedValue(T value = T()) noexcept : value_(value) {}
  SharedValue(const SharedValue&) = delete;
  SharedValue& operator=(const SharedValue&) = delete;
  SharedValue& operator=(T value) noexcept {
    test::Point();
    value_ = value;
    return *this;
  }
  operator T() const noexcept {
    test::Point();
    return value_;
  }

 private:
  T value_;
};

using SharedWord = SharedValue<uint32_t>;
template <class Pointer>
using SharedPointer = SharedValue<Pointer>;

inline int32_t LoadAcquire(const int32_t& word) noexcept {
  test::Point();
  return word;
}
inline void StoreRelease(int32_t& word, int32_t value) noexcept {
  test::Point();
  word = value;
}

}  // namespace kelvo
