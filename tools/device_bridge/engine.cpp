#include "engine.h"

#include <windows.h>

#include <stdio.h>
#include <string.h>

#include "device_functions.h"
#include "faults.h"
#include "library.h"

namespace bridge {
namespace {

constexpr uint32_t kPage = 0x1000;
constexpr uint32_t kFirstAddress = 0x10000, kLastAddress = 0x7FFF0000;
constexpr uint32_t kReturn = 0xFFFF0000;  // where a call from outside returns to
constexpr uint32_t kDataAbort = 4;        // the emulator's number of that trap
constexpr size_t kTranslatedBytes = 8 << 20;

int g_ids[] = {UC_ARM_REG_R0,  UC_ARM_REG_R1, UC_ARM_REG_R2,  UC_ARM_REG_R3,
               UC_ARM_REG_R4,  UC_ARM_REG_R5, UC_ARM_REG_R6,  UC_ARM_REG_R7,
               UC_ARM_REG_R8,  UC_ARM_REG_R9, UC_ARM_REG_R10, UC_ARM_REG_R11,
               UC_ARM_REG_R12, UC_ARM_REG_SP, UC_ARM_REG_LR,  UC_ARM_REG_CPSR};
constexpr int kIds = sizeof(g_ids) / sizeof(g_ids[0]);
enum { kSp = 13, kLr = 14 };

bool IsDeviceCode(uint32_t address) {
  return g_library->image.IsCode(address) || g_library->stubs.Contains(address);
}

void Check(uc_err error, const char* what) {
  if (error != UC_ERR_OK) Fail("%s: %s", what, uc_strerror(error));
}

}  // namespace

struct Engine::Registers {
  uint32_t value[kIds];
  void* place[kIds];
  Registers() {
    for (int i = 0; i < kIds; ++i) place[i] = &value[i];
  }
  void Read(uc_engine* uc) { uc_reg_read_batch(uc, g_ids, place, kIds); }
  void Write(uc_engine* uc) { uc_reg_write_batch(uc, g_ids, place, kIds); }
};

Engine::Engine() {
  Check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &uc_), "opening the emulator");
  Check(uc_ctl_set_cpu_model(uc_, UC_CPU_ARM_SA1110), "choosing the processor");
  Check(uc_ctl_set_tcg_buffer_size(uc_, kTranslatedBytes), "room for translated code");
  Check(uc_ctl_tlb_mode(uc_, UC_TLB_VIRTUAL), "choosing who maps pages");
  uc_hook hook;
  Check(uc_hook_add(uc_, &hook, UC_HOOK_TLB_FILL, reinterpret_cast<void*>(&OnPage), this, 1, 0),
        "mapping pages");
  Check(uc_hook_add(uc_, &hook, UC_HOOK_INTR, reinterpret_cast<void*>(&OnTrap), this, 1, 0),
        "watching traps");
  // Every address there can be; which of them are memory is asked page by page.
  Check(uc_mem_map_ptr(uc_, kFirstAddress, kLastAddress - kFirstAddress, UC_PROT_ALL,
                       reinterpret_cast<void*>(kFirstAddress)),
        "mapping memory");
}

Engine::~Engine() {
  uc_close(uc_);
}

bool Engine::OnPage(uc_engine*, uint64_t address, uc_mem_type type, uc_tlb_entry* entry,
                    void* self) {
  return static_cast<Engine*>(self)->MapPage(static_cast<uint32_t>(address), type, entry);
}

bool Engine::MapPage(uint32_t page, uc_mem_type type, uc_tlb_entry* entry) {
  const bool stub = g_library->stubs.Contains(page);
  entry->paddr = stub ? g_library->stubs.EmulatedPage(page) : page;
  if (IsDeviceCode(page)) {
    entry->perms = static_cast<uc_prot>(UC_PROT_READ | UC_PROT_EXEC);
  } else if (type == UC_MEM_FETCH) {
    return false;
  } else {
    const DWORD error = GetLastError();
    MEMORY_BASIC_INFORMATION memory = {};
    const bool there =
        stack_.Use(page) ||
        (page >= kFirstAddress && page < kLastAddress &&
         VirtualQuery(reinterpret_cast<void*>(page), &memory, sizeof(memory)) != 0 &&
         memory.State == MEM_COMMIT && (memory.Protect & (PAGE_NOACCESS | PAGE_GUARD)) == 0);
    SetLastError(error);
    // What the image may not write, the device would not let it write either. Elsewhere a
    // protection may change while the entry is in use; a page that is then not to be written faults
    // as it is.
    const bool fixed = g_library->image.Contains(page) && memory.Protect == PAGE_READONLY;
    entry->perms = static_cast<uc_prot>(fixed ? UC_PROT_READ : UC_PROT_READ | UC_PROT_WRITE);
    if (!there || (fixed && type == UC_MEM_WRITE)) {
      refusal_ = there ? "a write to constant data" : "no memory";
      refused_page_ = page;
      return false;
    }
  }
  return true;
}

void Engine::DescribePlace(char* text, uint32_t capacity) const {
  uint32_t pc = 0, lr = 0;
  uc_reg_read(uc_, UC_ARM_REG_PC, &pc);
  uc_reg_read(uc_, UC_ARM_REG_LR, &lr);
  const uint32_t base = g_library->image.base();
  snprintf(text, capacity, "pc %#x (from %#x)", pc - base, lr - base);
}

void Engine::OnTrap(uc_engine*, uint32_t number, void* self) {
  char place[64];
  static_cast<const Engine*>(self)->DescribePlace(place, sizeof(place));
  Fail("%s, %s", number == kDataAbort ? "an unaligned access" : "a trap", place);
}

void Engine::FailAt(uc_err error) const {
  char place[64];
  DescribePlace(place, sizeof(place));
  if (refusal_) Fail("%s in page %#x, %s", refusal_, refused_page_, place);
  // A trap is reported before it gets here.
  if (error == UC_ERR_EXCEPTION) Fail("an instruction that the processor lacks, %s", place);
  Fail("%s, %s", uc_strerror(error), place);
}

uint32_t Engine::Run(uint32_t pc) {
  refusal_ = nullptr;
  const uc_err error = uc_emu_start(uc_, pc, kReturn, 0, 0);
  uint32_t target = 0;
  uc_reg_read(uc_, UC_ARM_REG_PC, &target);
  if (error == UC_ERR_OK || target == kReturn) return kReturn;
  if (IsDeviceCode(target)) FailAt(error);
  return target;
}

void Engine::CallOut(uint32_t target) {
  Registers now;
  now.Read(uc_);
  const uint32_t sp = now.value[kSp];
  stack_.Use((sp - 4) & ~(kPage - 1));  // as the function would
  uint32_t words[kHostWords];
  memcpy(words, now.value, 16);
  memcpy(words + 4, reinterpret_cast<void*>(sp), sizeof(words) - 16);
  if (target < kFirstAddress || target >= kLastAddress) FailAt(UC_ERR_FETCH_UNMAPPED);
  CheckRecords(target, words);
  const bool method = g_library->IsHostMethod(target, words[0]);
  SetLastError(last_error_);
  uint64_t result = method ? CallHost(target, words + 1, words[0]) : CallHost(target, words, 0);
  last_error_ = GetLastError();
  void* places[] = {&result, reinterpret_cast<uint32_t*>(&result) + 1};
  uc_reg_write_batch(uc_, g_ids, places, 2);
}

uint64_t Engine::Call(uint32_t function, const uint32_t* words, uint32_t count) {
  const uint32_t entry_error = GetLastError();
  Registers outer, now;
  uint32_t sp = stack_.top();
  if (depth_++ == 0) {
    stack_.Reset();
    now.Read(uc_);
  } else {
    outer.Read(uc_);
    now.Read(uc_);
    sp = outer.value[kSp];
  }
  last_error_ = entry_error;
  if (count > 4) sp -= 4 * (count - 4);
  if (sp % 8 == 0) sp -= 4;
  for (uint32_t i = 0; i < count; ++i) {
    if (i < 4) {
      now.value[i] = words[i];
    } else {
      reinterpret_cast<uint32_t*>(sp)[i - 4] = words[i];
    }
  }
  now.value[kSp] = sp;
  now.value[kLr] = kReturn;
  now.Write(uc_);
  for (uint32_t target = Run(function); target != kReturn;) {
    CallOut(target);
    uint32_t back = 0;
    uc_reg_read(uc_, UC_ARM_REG_LR, &back);
    target = back == kReturn ? kReturn : Run(back);
  }
  now.Read(uc_);
  if (--depth_ != 0) outer.Write(uc_);
  SetLastError(last_error_);
  return static_cast<uint64_t>(now.value[1]) << 32 | now.value[0];
}

}  // namespace bridge
