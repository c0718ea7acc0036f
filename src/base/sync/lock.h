// A re-entrant lock. Two implementations behind it: base/windows/lock.cpp, base/native/lock.cpp.
#pragma once

#include <stdint.h>

namespace kelvo {

class Lock {
 public:
  Lock() noexcept;
  ~Lock();
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  void Enter() noexcept;
  // Leaves only when somebody has entered; a stray call does nothing.
  void Leave() noexcept;

 private:
  // Room for the platform's critical section, checked where it is built.
  alignas(8) unsigned char section_[sizeof(void*) == 4 ? 24 : 40];
  int32_t depth_ = 0;  // written by the holder only
};

class LockGuard {
 public:
  explicit LockGuard(Lock& lock) noexcept : lock_(lock) { lock_.Enter(); }
  ~LockGuard() { lock_.Leave(); }
  LockGuard(const LockGuard&) = delete;
  LockGuard& operator=(const LockGuard&) = delete;

 private:
  Lock& lock_;
};

}  // namespace kelvo
