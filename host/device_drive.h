#pragma once

#include <string>

namespace velmora {

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
