// The functions that the device's library imports: this machine's, the stand-ins' where the device
// has one of its own, and the bridge's where both have it but differ.
#pragma once

#include <windows.h>

#include <stdint.h>

#include <map>
#include <string>

namespace bridge {

class Imports {
 public:
  Imports() = default;
  ~Imports();
  Imports(const Imports&) = delete;
  Imports& operator=(const Imports&) = delete;

  // A function that the device lacks, or that nobody here has, ends the run.
  uint32_t Resolve(const char* library, const char* name);

 private:
  uint32_t Find(const char* file, const char* name);

  std::map<std::string, HMODULE> modules_;  // held until the end
};

}  // namespace bridge
