// The device's processor: one for each thread that runs the device's code, over the process's own
// memory at the same addresses.
#pragma once

#include <stdint.h>
#include <unicorn/unicorn.h>

#include "guest_stack.h"

namespace bridge {

class Engine {
 public:
  static constexpr uint32_t kMaxWords = 16;  // of arguments

  Engine();
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  // Calls a function of the device's library; the result is r1:r0. Whatever that calls of this
  // machine is called on the way, and may call again.
  uint64_t Call(uint32_t function, const uint32_t* words, uint32_t count);

  bool running() const { return depth_ != 0; }
  // "pc 0x1234 (from 0x5678)", relative to the library; for messages.
  void DescribePlace(char* text, uint32_t capacity) const;

 private:
  struct Registers;
  static bool OnPage(uc_engine*, uint64_t address, uc_mem_type type, uc_tlb_entry* entry,
                     void* self);
  static void OnTrap(uc_engine*, uint32_t number, void* self);
  bool MapPage(uint32_t page, uc_mem_type type, uc_tlb_entry* entry);
  // Runs to the next jump out of the device's code; its target.
  uint32_t Run(uint32_t pc);
  [[noreturn]] void FailAt(uc_err error) const;
  // Calls a function of this machine with the arguments that the registers and the stack hold.
  void CallOut(uint32_t target);

  uc_engine* uc_ = nullptr;
  GuestStack stack_;
  int depth_ = 0;
  const char* refusal_ = nullptr;  // why the code was refused access to refused_page_
  uint32_t refused_page_ = 0;
  uint32_t last_error_ = 0;  // of the device's code, which the emulator's own calls must not change
};

// The thread's; made at its first use.
Engine& CurrentEngine();

// The engines of the process, from attach to detach.
void StartEngines();
void EndThread();  // the thread's engine waits for another one
void CloseEngines();

}  // namespace bridge
