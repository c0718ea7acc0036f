#pragma once

#include <windows.h>

namespace velmora {

class CriticalSection {
 public:
  CriticalSection() { InitializeCriticalSection(&section_); }
  ~CriticalSection() { DeleteCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

 private:
  friend class Guard;
  CRITICAL_SECTION section_;
};

class Guard {
 public:
  explicit Guard(CriticalSection& lock) : section_(lock.section_) {
    EnterCriticalSection(&section_);
  }
  ~Guard() { LeaveCriticalSection(&section_); }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  CRITICAL_SECTION& section_;
};

}  // namespace velmora
