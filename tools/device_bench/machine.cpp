#include "machine.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "report.h"

namespace bench {
namespace {

// The program, the heap, a stack that is not watched here, the stubs, and where calls return to.
constexpr uint32_t kBytes = 80 << 20;
constexpr uint32_t kHeap = Machine::kBase + (4 << 20);
constexpr uint32_t kReturn = Machine::kBase + kBytes - 0x1000;
constexpr uint32_t kStubs = kReturn - 0x10000;
constexpr uint32_t kStack = kStubs - 0x20000;
constexpr uint32_t kSupervisorCall = 0xEF000000, kMovePcLr = 0xE1A0F00E;
constexpr uint32_t kStubBytes = 8;

void Check(uc_err error, const char* what) {
  if (error != UC_ERR_OK) Fail("%s: %s", what, uc_strerror(error));
}

}  // namespace

Machine::Machine() : memory_(static_cast<uint8_t*>(calloc(kBytes, 1)), &free), heap_(kHeap) {
  Check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &engine_), "opening the emulator");
  Check(uc_ctl_set_cpu_model(engine_, UC_CPU_ARM_SA1110), "choosing the processor");
  Check(uc_mem_map_ptr(engine_, kBase, kBytes, UC_PROT_ALL, memory_.get()), "mapping memory");
  uc_hook hook;
  const auto interrupt = reinterpret_cast<void*>(&OnInterrupt);
  Check(uc_hook_add(engine_, &hook, UC_HOOK_INTR, interrupt, this, 1, 0), "watching calls");
  SetRegister(UC_ARM_REG_SP, kStubs);
}

Machine::~Machine() {
  uc_close(engine_);
}

uint8_t* Machine::At(uint32_t address, uint32_t bytes) const {
  const uint32_t offset = address - kBase;
  if (offset > kBytes || bytes > kBytes - offset) {
    Fail("a call was handed %u bytes at %#x, which is no memory (called from %#x)", bytes, address,
         Register(UC_ARM_REG_LR));
  }
  return memory_.get() + offset;
}

uint32_t Machine::Word(uint32_t address) const {
  uint32_t value;
  memcpy(&value, At(address, 4), 4);
  return value;
}

void Machine::SetWord(uint32_t address, uint32_t value) {
  memcpy(At(address, 4), &value, 4);
}

std::string Machine::Text(uint32_t address) const {
  return reinterpret_cast<const char*>(At(address, 1));
}

// The size lies before the block.
uint32_t Machine::Allocate(uint32_t bytes) {
  if (bytes > kStack - heap_ - 16) Fail("the heap is used up");
  SetWord(heap_, bytes);
  const uint32_t block = heap_ + 8;
  heap_ = (block + bytes + 7) & ~7u;
  return block;
}

uint32_t Machine::Resize(uint32_t block, uint32_t bytes) {
  const uint32_t moved = Allocate(bytes);
  if (block == 0) return moved;
  const uint32_t kept = std::min(Word(block - 8), bytes);
  memcpy(At(moved, kept), At(block, kept), kept);
  return moved;
}

uint32_t Machine::Register(int id) const {
  uint32_t value = 0;
  uc_reg_read(engine_, id, &value);
  return value;
}

void Machine::SetRegister(int id, uint32_t value) {
  uc_reg_write(engine_, id, &value);
}

uint32_t Machine::Argument(int index) const {
  if (index < 4) return Register(UC_ARM_REG_R0 + index);
  return Word(Register(UC_ARM_REG_SP) + 4 * static_cast<uint32_t>(index - 4));
}

uint32_t Machine::AddStub(Handler handler) {
  const uint32_t address = kStubs + kStubBytes * static_cast<uint32_t>(stubs_.size());
  if (address == kReturn) Fail("too many stubs");
  SetWord(address, kSupervisorCall);
  SetWord(address + 4, kMovePcLr);
  stubs_.push_back(std::move(handler));
  return address;
}

void Machine::OnInterrupt(uc_engine*, uint32_t, void* self) {
  Machine& machine = *static_cast<Machine*>(self);
  const uint32_t pc = machine.Register(UC_ARM_REG_PC);
  const uint32_t index = (pc - kStubs) / kStubBytes;
  if (index >= machine.stubs_.size()) Fail("an exception at %#x", pc);
  machine.SetRegister(UC_ARM_REG_R0, machine.stubs_[index](machine));
}

void Machine::OnBlock(uc_engine*, uint64_t, uint32_t bytes, void* self) {
  static_cast<Machine*>(self)->instructions_ += bytes / 4;
}

uint32_t Machine::Call(uint32_t function, const std::vector<uint32_t>& arguments) {
  uc_context* outer = nullptr;
  Check(uc_context_alloc(engine_, &outer), "saving registers");
  Check(uc_context_save(engine_, outer), "saving registers");
  const uint32_t sp = (Register(UC_ARM_REG_SP) - 128) & ~7u;
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (i < 4) {
      SetRegister(UC_ARM_REG_R0 + static_cast<int>(i), arguments[i]);
    } else {
      SetWord(sp + 4 * static_cast<uint32_t>(i - 4), arguments[i]);
    }
  }
  SetRegister(UC_ARM_REG_SP, sp);
  SetRegister(UC_ARM_REG_LR, kReturn);
  const uc_err error = uc_emu_start(engine_, function, kReturn, 0, 0);
  if (error != UC_ERR_OK) {
    Fail("%s at pc %#x, lr %#x, sp %#x", uc_strerror(error), Register(UC_ARM_REG_PC),
         Register(UC_ARM_REG_LR), Register(UC_ARM_REG_SP));
  }
  const uint32_t result = Register(UC_ARM_REG_R0);
  Check(uc_context_restore(engine_, outer), "restoring registers");
  uc_context_free(outer);
  return result;
}

void Machine::CountInstructions(uint32_t begin, uint32_t bytes) {
  uc_hook hook;
  Check(uc_hook_add(engine_, &hook, UC_HOOK_BLOCK, reinterpret_cast<void*>(&OnBlock), this, begin,
                    begin + bytes - 1),
        "counting instructions");
}

}  // namespace bench
