// Calls into the emulated program. A thread runs to its end where it is started, so that nothing
// depends on time and counts repeat exactly.
#pragma once

#include <stdint.h>

#include <functional>
#include <vector>

#include "machine.h"

namespace bench {

class Threads {
 public:
  explicit Threads(Machine& machine);

  uint32_t Call(uint32_t function, const std::vector<uint32_t>& arguments);
  // Within a call.
  void Start(uint32_t function, uint32_t parameter) { machine_.RunInside(function, {parameter}); }

  uint32_t running() const { return 0; }
  bool RunUntil(const std::function<bool()>& done, uint64_t) const { return done(); }

  // Bytes of the stack that were used.
  uint32_t deepest_stack() const;

 private:
  Machine& machine_;
};

}  // namespace bench
