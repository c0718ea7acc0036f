#pragma once

#include <stdint.h>

namespace kelvo {

// A 32-bit word that one thread writes and another reads without a lock, as with a flag. No order
// between different words is promised.
class SharedWord {
 public:
  constexpr SharedWord(uint32_t value = 0) noexcept : value_(value) {}
  SharedWord(const SharedWord&) = delete;
  SharedWord& operator=(const SharedWord&) = delete;
  SharedWord& operator=(uint32_t value) noexcept {
    __atomic_store_n(&value_, value, __ATOMIC_RELAXED);
    return *this;
  }
  operator uint32_t() const noexcept { return __atomic_load_n(&value_, __ATOMIC_RELAXED); }

 private:
  uint32_t value_;
};

// The same for a pointer; who reads one also finds what was written before it.
template <class Pointer>
class SharedPointer {
 public:
  constexpr SharedPointer(Pointer value = nullptr) noexcept : value_(value) {}
  SharedPointer(const SharedPointer&) = delete;
  SharedPointer& operator=(const SharedPointer&) = delete;
  SharedPointer& operator=(Pointer value) noexcept {
    __atomic_store_n(&value_, value, __ATOMIC_RELEASE);
    return *this;
  }
  operator Pointer() const noexcept { return __atomic_load_n(&value_, __ATOMIC_ACQUIRE); }

 private:
  Pointer value_;
};

// A word of a record that others lay out, written by one thread and read by another without a lock:
// who reads a value also finds what was written before it.
inline int32_t LoadAcquire(const int32_t& word) noexcept {
  return __atomic_load_n(&word, __ATOMIC_ACQUIRE);
}
inline void StoreRelease(int32_t& word, int32_t value) noexcept {
  __atomic_store_n(&word, value, __ATOMIC_RELEASE);
}

}  // namespace kelvo
