// Estimates the cycles that an SA-1110 at 206 MHz spends on what the emulator carries out. Where
// the figures are from is in docs/device-speed.md.
#pragma once

#include <stdint.h>

#include <vector>

#include "cache.h"
#include "machine.h"

namespace bench {

// What the pipeline must know of an ARMv4 instruction.
struct Instruction {
  enum Kind : uint8_t { kOther, kMultiply, kLongMultiply, kLoad, kBranch };

  Kind kind = kOther;
  uint8_t condition = 14;  // as in the instruction: 14 is always
  uint8_t multiplier = 0;  // the register whose value decides how long a multiplication takes
  uint8_t issue = 1;       // cycles
  uint8_t delay = 0;       // cycles until the result can be used; multiplications: by their value
  uint32_t reads = 0;      // a bit for each register
  uint32_t writes = 0;     // results, which come after the delay
};

Instruction Decode(uint32_t word);

// Whether an instruction with this condition is carried out with these flags.
bool Holds(uint8_t condition, uint32_t cpsr);

struct Cycles {
  uint64_t instructions = 0;
  double all = 0;
  double memory = 0;  // of all: waiting for memory
  uint64_t code_misses = 0, data_misses = 0;

  Cycles operator-(const Cycles& from) const {
    return {instructions - from.instructions, all - from.all, memory - from.memory,
            code_misses - from.code_misses, data_misses - from.data_misses};
  }
};

class CycleModel {
 public:
  static constexpr double kMhz = 206;

  // Follows the code in the range from now on. Much slower than running without.
  CycleModel(Machine& machine, uint32_t begin, uint32_t bytes);
  CycleModel(const CycleModel&) = delete;
  CycleModel& operator=(const CycleModel&) = delete;

  Cycles total() const;

 private:
  static void OnInstruction(uc_engine*, uint64_t address, uint32_t, void* self);
  static void OnAccess(uc_engine*, uc_mem_type type, uint64_t address, int, int64_t, void* self);
  void Step(uint32_t address);
  void Access(uint32_t address, bool store);
  void WaitForLine();
  double MultiplyDelay(const Instruction& instruction) const;

  Machine& machine_;
  const uint32_t begin_;
  std::vector<Instruction> code_;

  double now_ = 0;
  double ready_[16] = {};  // registers
  double multiplier_ready_ = 0;
  uint32_t expected_ = 0;  // the address after the last instruction
  double jump_ = 0;        // what it costs when another one comes
  uint32_t code_line_ = ~0u;
  Cache code_cache_{16 * 1024}, data_cache_{8 * 1024};
  WriteBuffer write_buffer_;
  Cycles total_;
};

}  // namespace bench
