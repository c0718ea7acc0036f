// The host's MediaReader: one file of this machine, whole in memory.
#pragma once

#include <stdint.h>

#include <vector>

#include "process.h"

namespace bench {

class HostReader {
 public:
  // The object lives in the process's memory as long as the process.
  HostReader(Process& process, std::vector<uint8_t> bytes);

  uint32_t object() const { return object_; }

 private:
  uint32_t Seek(Process& process);
  uint32_t Read(Process& process);

  const std::vector<uint8_t> bytes_;
  int64_t position_ = 0;
  uint32_t object_;
};

}  // namespace bench
