#include "threads.h"

#include <string.h>

namespace bench {
namespace {

constexpr uint32_t kStack = 0x60000000, kStackBytes = 0x20000;
constexpr uint8_t kUntouched = 0xA5;

}  // namespace

Threads::Threads(Machine& machine) : machine_(machine) {
  machine.Map(kStack, kStackBytes);
  memset(machine.At(kStack, kStackBytes), kUntouched, kStackBytes);
}

uint32_t Threads::Call(uint32_t function, const std::vector<uint32_t>& arguments) {
  const uint32_t sp = kStack + kStackBytes - 128;
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (i < 4) {
      machine_.SetRegister(UC_ARM_REG_R0 + static_cast<int>(i), arguments[i]);
    } else {
      machine_.SetWord(sp + 4 * static_cast<uint32_t>(i - 4), arguments[i]);
    }
  }
  machine_.SetRegister(UC_ARM_REG_SP, sp);
  machine_.SetRegister(UC_ARM_REG_LR, Machine::kReturn);
  machine_.Run(function);
  return machine_.Register(UC_ARM_REG_R0);
}

uint32_t Threads::deepest_stack() const {
  const uint8_t* memory = machine_.At(kStack, kStackBytes);
  uint32_t untouched = 0;
  while (untouched < kStackBytes && memory[untouched] == kUntouched) ++untouched;
  return kStackBytes - untouched;
}

}  // namespace bench
