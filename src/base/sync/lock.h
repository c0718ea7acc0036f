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
  // Only by the thread that has entered. While nobody has, it does nothing.
  void Leave() noexcept;
  // Gives the system's part back early; the lock is dead then.
  void Close() noexcept;

 private:
  static constexpr int32_t kClosed = -1;

  // Room for the platform's critical section, checked where it is built.
  alignas(void*) unsigned char section_[sizeof(void*) == 4 ? 24 : 40];
  int32_t depth_ = 0;  // written by the holder only
};

static_assert(sizeof(void*) != 4 || sizeof(Lock) == 28);

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
