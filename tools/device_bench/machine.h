// The emulated processor and its memory. Calls that leave the emulated program end in stubs: a
// supervisor call, which runs a handler of ours, and a return.
#pragma once

#include <stdint.h>
#include <unicorn/unicorn.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bench {

class Machine {
 public:
  using Handler = std::function<void()>;
  static constexpr uint32_t kReturn = 0x70000000;  // where a call from outside returns to

  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Zero-filled memory; address and size are multiples of a page.
  void Map(uint32_t address, uint32_t bytes);

  // Memory as the emulated program sees it; a range that is not mapped as a whole ends the run.
  uint8_t* At(uint32_t address, uint32_t bytes) const;
  uint32_t Word(uint32_t address);
  void SetWord(uint32_t address, uint32_t value);
  std::string Text(uint32_t address);
  std::u16string Wide(uint32_t address);
  void SetWide(uint32_t address, const std::u16string& text);  // with its terminator

  uint32_t Register(int id) const;
  void SetRegister(int id, uint32_t value);
  // Argument of the call that a handler serves.
  uint32_t Argument(int index);

  uint32_t AddStub(Handler handler);

  // Runs until the program returns to kReturn (true) or a handler has called Stop (false).
  bool Run(uint32_t pc);
  void Stop();

  // A second run inside a handler; every register is as before afterwards, the result is r0.
  uint32_t RunInside(uint32_t pc, const std::vector<uint32_t>& arguments);

  // Instructions executed in the range are counted from now on.
  void CountInstructions(uint32_t begin, uint32_t bytes);
  uint64_t instructions() const { return instructions_; }

  // From now on an unaligned access ends the run, as it would on the device. Slow.
  void RefuseUnaligned();

  uc_engine* engine() const { return engine_; }

 private:
  struct Region {
    uint32_t bytes;
    std::unique_ptr<uint8_t[]> memory;
  };
  static void OnInterrupt(uc_engine*, uint32_t number, void* self);
  static void OnBlock(uc_engine*, uint64_t address, uint32_t bytes, void* self);
  static void OnAccess(uc_engine*, uc_mem_type type, uint64_t address, int bytes, int64_t value,
                       void* self);
  void Start(uint32_t pc);

  uc_engine* engine_ = nullptr;
  std::map<uint32_t, Region> regions_;
  std::vector<Handler> stubs_;
  uint64_t instructions_ = 0;
  bool stopped_ = false;
};

}  // namespace bench
