// This program's place on the machine.
#pragma once

#include <windows.h>

#include <string>

namespace velmora {

// The folder of this program, without a backslash at its end.
std::wstring ProgramFolder();

// The path from the root of its drive, as programs with another current folder need it; empty for
// one that is longer than plug-ins take.
std::wstring FullPath(const std::wstring& path);

// Registers this program's folder as the installation, where the library keeps its files. An
// installed player's installer does this.
void RegisterInstallation();

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
