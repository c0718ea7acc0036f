#include "machine.h"

#include <string.h>

#include "fail.h"

namespace bench {
namespace {

constexpr uint32_t kPage = 0x1000;
constexpr uint32_t kStubs = 0x70001000;
constexpr uint32_t kStubBytes = 8;
constexpr uint32_t kStubRoom = 0x10000;
constexpr uint32_t kSupervisorCall = 0xEF000000;
constexpr uint32_t kMovePcLr = 0xE1A0F00E;

void Check(uc_err error, const char* what) {
  if (error != UC_ERR_OK) Fail("%s: %s", what, uc_strerror(error));
}

}  // namespace

Machine::Machine() {
  Check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &engine_), "opening the emulator");
  Check(uc_ctl_set_cpu_model(engine_, UC_CPU_ARM_SA1110), "choosing the processor");
  uc_hook hook;
  Check(
      uc_hook_add(engine_, &hook, UC_HOOK_INTR, reinterpret_cast<void*>(&OnInterrupt), this, 1, 0),
      "watching calls");
  Map(kReturn, kPage);
  Map(kStubs, kStubRoom);
}

Machine::~Machine() {
  uc_close(engine_);
}

void Machine::Map(uint32_t address, uint32_t bytes) {
  auto memory = std::make_unique<uint8_t[]>(bytes);
  Check(uc_mem_map_ptr(engine_, address, bytes, UC_PROT_ALL, memory.get()), "mapping memory");
  regions_[address] = {bytes, std::move(memory)};
}

uint8_t* Machine::At(uint32_t address, uint32_t bytes) const {
  auto found = regions_.upper_bound(address);
  if (found != regions_.begin()) {
    --found;
    const uint32_t offset = address - found->first;
    if (offset <= found->second.bytes && bytes <= found->second.bytes - offset) {
      return found->second.memory.get() + offset;
    }
  }
  Fail("a call was handed %u bytes at %#x, which is no memory (called from %#x)", bytes, address,
       Register(UC_ARM_REG_LR));
}

uint32_t Machine::Word(uint32_t address) {
  uint32_t value;
  memcpy(&value, At(address, 4), 4);
  return value;
}

void Machine::SetWord(uint32_t address, uint32_t value) {
  memcpy(At(address, 4), &value, 4);
}

std::string Machine::Text(uint32_t address) {
  std::string text;
  while (const char c = static_cast<char>(*At(address++, 1))) text += c;
  return text;
}

std::u16string Machine::Wide(uint32_t address) {
  std::u16string text;
  for (;; address += 2) {
    char16_t c;
    memcpy(&c, At(address, 2), 2);
    if (c == 0) return text;
    text += c;
  }
}

void Machine::SetWide(uint32_t address, const std::u16string& text) {
  const uint32_t bytes = static_cast<uint32_t>((text.size() + 1) * 2);
  memcpy(At(address, bytes), text.c_str(), bytes);
}

uint32_t Machine::Register(int id) const {
  uint32_t value = 0;
  uc_reg_read(engine_, id, &value);
  return value;
}

void Machine::SetRegister(int id, uint32_t value) {
  uc_reg_write(engine_, id, &value);
}

uint32_t Machine::Argument(int index) {
  if (index < 4) return Register(UC_ARM_REG_R0 + index);
  return Word(Register(UC_ARM_REG_SP) + 4 * static_cast<uint32_t>(index - 4));
}

uint32_t Machine::AddStub(Handler handler) {
  const uint32_t address = kStubs + kStubBytes * static_cast<uint32_t>(stubs_.size());
  if (address + kStubBytes > kStubs + kStubRoom) Fail("too many stubs");
  SetWord(address, kSupervisorCall);
  SetWord(address + 4, kMovePcLr);
  stubs_.push_back(std::move(handler));
  return address;
}

void Machine::OnInterrupt(uc_engine*, uint32_t, void* self) {
  Machine& machine = *static_cast<Machine*>(self);
  const uint32_t index = (machine.Register(UC_ARM_REG_PC) - kStubs) / kStubBytes;
  if (index >= machine.stubs_.size()) {
    Fail("an exception at %#x", machine.Register(UC_ARM_REG_PC));
  }
  machine.stubs_[index]();
}

void Machine::OnBlock(uc_engine*, uint64_t, uint32_t bytes, void* self) {
  static_cast<Machine*>(self)->instructions_ += bytes / 4;
}

void Machine::OnAccess(uc_engine*, uc_mem_type, uint64_t address, int bytes, int64_t, void* self) {
  if (address % static_cast<uint32_t>(bytes) == 0) return;
  Fail("unaligned access of %d bytes at %#x, pc %#x", bytes, static_cast<uint32_t>(address),
       static_cast<Machine*>(self)->Register(UC_ARM_REG_PC));
}

void Machine::Start(uint32_t pc) {
  const uc_err error = uc_emu_start(engine_, pc, kReturn, 0, 0);
  if (error != UC_ERR_OK) {
    Fail("%s at pc %#x, lr %#x, sp %#x", uc_strerror(error), Register(UC_ARM_REG_PC),
         Register(UC_ARM_REG_LR), Register(UC_ARM_REG_SP));
  }
}

bool Machine::Run(uint32_t pc) {
  stopped_ = false;
  Start(pc);
  const uint32_t stopped_at = Register(UC_ARM_REG_PC);
  if (stopped_ && (stopped_at < kStubs || stopped_at >= kStubs + kStubRoom)) {
    Fail("the emulator stopped at %#x, behind the call that waits", stopped_at);
  }
  return !stopped_;
}

void Machine::Stop() {
  stopped_ = true;
  uc_emu_stop(engine_);
}

uint32_t Machine::RunInside(uint32_t pc, const std::vector<uint32_t>& arguments) {
  uc_context* saved = nullptr;
  Check(uc_context_alloc(engine_, &saved), "saving registers");
  Check(uc_context_save(engine_, saved), "saving registers");
  SetRegister(UC_ARM_REG_SP, (Register(UC_ARM_REG_SP) - 64) & ~7u);
  SetRegister(UC_ARM_REG_LR, kReturn);
  for (size_t i = 0; i < arguments.size(); ++i) {
    SetRegister(UC_ARM_REG_R0 + static_cast<int>(i), arguments[i]);
  }
  Start(pc);
  if (stopped_) Fail("a function called back by the system waited");
  const uint32_t result = Register(UC_ARM_REG_R0);
  Check(uc_context_restore(engine_, saved), "restoring registers");
  uc_context_free(saved);
  return result;
}

void Machine::CountInstructions(uint32_t begin, uint32_t bytes) {
  uc_hook hook;
  Check(uc_hook_add(engine_, &hook, UC_HOOK_BLOCK, reinterpret_cast<void*>(&OnBlock), this, begin,
                    begin + bytes - 1),
        "counting instructions");
  // Blocks that are already translated keep the hooks that they were made with.
  Check(uc_ctl_remove_cache(engine_, begin, begin + bytes), "dropping translated code");
}

void Machine::RefuseUnaligned() {
  uc_hook hook;
  Check(uc_hook_add(engine_, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE,
                    reinterpret_cast<void*>(&OnAccess), this, 1, 0),
        "watching accesses");
}

}  // namespace bench
