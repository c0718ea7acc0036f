#include "cycle_model.h"

#include <string.h>

#include <algorithm>

#include "report.h"

namespace bench {
namespace {

constexpr double kLineCycles = 0.1 * CycleModel::kMhz;     // 100 ns for a line of 32 bytes
constexpr double kBlockCycles = kLineCycles / 2;           // for 16 bytes to memory
constexpr double kBranchCycles = 1, kOtherJumpCycles = 2;  // lost when taken

}  // namespace

CycleModel::CycleModel(Machine& machine, uint32_t begin, uint32_t bytes)
    : machine_(machine), begin_(begin), write_buffer_(kBlockCycles) {
  for (uint32_t at = 0; at < bytes; at += 4) code_.push_back(Decode(machine.Word(begin + at)));
  uc_hook hook;
  const auto code = reinterpret_cast<void*>(&OnInstruction);
  const auto access = reinterpret_cast<void*>(&OnAccess);
  if (uc_hook_add(machine.engine(), &hook, UC_HOOK_CODE, code, this, begin, begin + bytes - 1) ||
      uc_hook_add(machine.engine(), &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, access, this, 1,
                  0) ||
      uc_ctl_remove_cache(machine.engine(), begin, begin + bytes)) {
    Fail("cannot follow the code");
  }
}

Cycles CycleModel::total() const {
  Cycles cycles = total_;
  cycles.all = now_;
  return cycles;
}

void CycleModel::OnInstruction(uc_engine*, uint64_t address, uint32_t, void* self) {
  static_cast<CycleModel*>(self)->Step(static_cast<uint32_t>(address));
}

void CycleModel::OnAccess(uc_engine*, uc_mem_type type, uint64_t address, int, int64_t,
                          void* self) {
  static_cast<CycleModel*>(self)->Access(static_cast<uint32_t>(address), type == UC_MEM_WRITE);
}

void CycleModel::WaitForLine() {
  now_ += kLineCycles;
  total_.memory += kLineCycles;
}

// The array takes 12 bits a cycle and stops when only copies of the sign are left.
double CycleModel::MultiplyDelay(const Instruction& instruction) const {
  const int number = instruction.multiplier;
  const int32_t value = static_cast<int32_t>(
      machine_.Register(number == 14 ? UC_ARM_REG_LR : UC_ARM_REG_R0 + number));
  const int32_t above_11 = value >> 11, above_23 = value >> 23;
  return above_11 == 0 || above_11 == -1 ? 1 : above_23 == 0 || above_23 == -1 ? 2 : 3;
}

void CycleModel::Step(uint32_t address) {
  ++total_.instructions;
  if (address != expected_) now_ += jump_;
  if (address / Cache::kLineBytes != code_line_) {
    code_line_ = address / Cache::kLineBytes;
    if (!code_cache_.Find(address, false)) {
      code_cache_.Fill(address);
      ++total_.code_misses;
      WaitForLine();
    }
  }
  const Instruction& instruction = code_[(address - begin_) / 4];
  expected_ = address + 4;
  jump_ = instruction.kind == Instruction::kBranch ? kBranchCycles : kOtherJumpCycles;
  if (instruction.condition < 14 &&
      !Holds(instruction.condition, machine_.Register(UC_ARM_REG_CPSR))) {
    now_ += 1;
    return;
  }

  double delay = instruction.delay;
  for (uint32_t reads = instruction.reads; reads != 0; reads &= reads - 1) {
    now_ = std::max(now_, ready_[__builtin_ctz(reads)]);
  }
  const bool multiplies =
      instruction.kind == Instruction::kMultiply || instruction.kind == Instruction::kLongMultiply;
  if (multiplies) {
    delay = MultiplyDelay(instruction);
    now_ = std::max(now_, multiplier_ready_);
  }
  now_ += instruction.issue;
  if (multiplies) multiplier_ready_ = now_ + delay - 1;
  for (uint32_t writes = instruction.writes; writes != 0; writes &= writes - 1) {
    ready_[__builtin_ctz(writes)] = now_ + delay;
  }
}

// Loads fetch a line that is not there; stores do not.
void CycleModel::Access(uint32_t address, bool store) {
  if (data_cache_.Find(address, store)) return;
  const double before = now_;
  if (store) {
    now_ = write_buffer_.Put(address, now_);
  } else {
    ++total_.data_misses;
    if (data_cache_.Fill(address)) {
      now_ = write_buffer_.Put(address, now_);
      now_ = write_buffer_.Put(address + WriteBuffer::kBlockBytes, now_);
    }
    now_ += kLineCycles;
  }
  total_.memory += now_ - before;
}

}  // namespace bench
