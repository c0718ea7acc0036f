// What the processor's pipeline must know of an ARMv4 instruction to time it.
#pragma once

#include <stdint.h>

namespace bench {

struct Instruction {
  enum Kind : uint8_t { kOther, kMultiply, kLongMultiply, kLoad, kBranch };

  Kind kind = kOther;
  uint8_t condition = 14;  // as in the instruction: 14 is always
  uint8_t multiplier = 0;  // the register whose value decides how long a multiplication takes
  uint8_t issue = 1;       // cycles
  uint8_t delay = 0;       // cycles until the result can be used; multiplications: by their value
  uint32_t reads = 0;      // a bit for each register
  uint32_t writes = 0;     // results, which come after the delay
  bool writes_pc = false;
};

Instruction Decode(uint32_t word);

// Whether an instruction with this condition is carried out with these flags.
bool Holds(uint8_t condition, uint32_t cpsr);

}  // namespace bench
