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

// What the system says about the last call that failed on this thread.
std::wstring SystemReason();

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

// Makes a folder the root of a drive of its own and that drive the current one, so that "\" is the
// folder as it is the root of a handheld. Undone at the end of its life. Where drives cannot be
// made by a program (Wine), the folder is to be the root of a drive already.
class DeviceDrive {
 public:
  explicit DeviceDrive(const std::wstring& folder);
  ~DeviceDrive();
  DeviceDrive(const DeviceDrive&) = delete;
  DeviceDrive& operator=(const DeviceDrive&) = delete;

  bool ready() const { return !name_.empty(); }

 private:
  std::wstring name_;  // "V:"
  std::wstring before_;
  bool mapped_ = true;
};

}  // namespace velmora
