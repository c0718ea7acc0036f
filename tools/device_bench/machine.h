// The emulated processor and its memory. Nothing in it depends on time or on another thread, so
// that counts repeat exactly. Calls that leave the emulated program end in stubs: a supervisor
// call, which runs a handler of ours, and a return.
#pragma once

#include <stdint.h>
#include <unicorn/unicorn.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

class Machine {
 public:
  using Handler = std::function<uint32_t(Machine&)>;  // the result is r0
  static constexpr uint32_t kBase = 0x10000000;       // memory begins here, with the program

  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Memory as the emulated program sees it; a range beyond it ends the run.
  uint8_t* At(uint32_t address, uint32_t bytes) const;
  uint32_t Word(uint32_t address) const;
  void SetWord(uint32_t address, uint32_t value);
  std::string Text(uint32_t address) const;

  // Zero-filled, and never used twice: what is wrong with the use of the heap the bridge tells.
  uint32_t Allocate(uint32_t bytes);
  uint32_t Resize(uint32_t block, uint32_t bytes);

  uint32_t Register(int id) const;
  void SetRegister(int id, uint32_t value);
  // Argument of the call that a handler serves.
  uint32_t Argument(int index) const;

  uint32_t AddStub(Handler handler);
  // Also from within a handler: a thread runs to its end where it is started.
  uint32_t Call(uint32_t function, const std::vector<uint32_t>& arguments);

  // Instructions executed in the range are counted from now on.
  void CountInstructions(uint32_t begin, uint32_t bytes);
  uint64_t instructions() const { return instructions_; }

  uc_engine* engine() const { return engine_; }

 private:
  static void OnInterrupt(uc_engine*, uint32_t number, void* self);
  static void OnBlock(uc_engine*, uint64_t address, uint32_t bytes, void* self);

  uc_engine* engine_ = nullptr;
  std::unique_ptr<uint8_t, void (*)(void*)> memory_;
  uint32_t heap_;  // the next block
  std::vector<Handler> stubs_;
  uint64_t instructions_ = 0;
};

}  // namespace bench
