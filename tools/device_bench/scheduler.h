// Threads of the emulated program, one at a time: a thread runs until it waits in a system call.
// The clock counts the time that the instructions would take on the device; when all threads wait,
// it jumps to the next moment at which something happens.
#pragma once

#include <stdint.h>

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "machine.h"

namespace bench {

inline constexpr double kCyclesPerInstruction = 1.2;
inline constexpr double kDeviceMhz = 206;
inline constexpr uint64_t kNever = ~uint64_t{0};

class Scheduler {
 public:
  // Asked until it is true; may then set the result of the call that waits.
  using Ready = std::function<bool(uint32_t* result)>;

  explicit Scheduler(Machine& machine);
  ~Scheduler();

  uint32_t Start(uint32_t function, uint32_t parameter);  // the thread's number
  bool HasEnded(uint32_t thread) const;
  uint32_t current() const { return current_; }
  uint32_t running() const;  // threads that have not ended, without the main thread

  // For handlers. The calling thread goes on when `ready` says so, or at `deadline` (microseconds)
  // with the result `late`.
  void Wait(Ready ready, uint64_t deadline = kNever, uint32_t late = 0);

  // Calls a function on the main thread; other threads run while it waits.
  uint32_t Call(uint32_t function, const std::vector<uint32_t>& arguments);
  // Lets the other threads run until `done`. False when `limit` microseconds have passed first.
  bool RunUntil(const std::function<bool()>& done, uint64_t limit);

  uint64_t now() const;  // microseconds
  // The clock does not jump over the moments that an alarm names (kNever: none).
  void AddAlarm(std::function<uint64_t()> next) { alarms_.push_back(std::move(next)); }
  uint32_t deepest_stack() const;  // bytes, of all threads so far

 private:
  enum class State { kReady, kWaiting, kEnded };
  struct Thread {
    State state = State::kEnded;
    uc_context* context = nullptr;
    uint32_t stack = 0;  // lowest address
    uint32_t resume = 0;
    Ready ready;
    uint64_t deadline = kNever;
    uint32_t late = 0;
  };

  Thread& Prepare(uint32_t number, uint32_t function, const std::vector<uint32_t>& arguments);
  uint32_t TakeStack();
  bool Wake(Thread& thread, uint32_t* result);
  bool Step(bool with_main);  // false when no thread could run
  void Run(uint32_t number, bool has_result, uint32_t result);
  bool AdvanceClock(bool with_main, uint64_t limit);

  Machine& machine_;
  std::map<uint32_t, Thread> threads_;
  std::vector<uint32_t> free_stacks_;
  std::vector<uint32_t> stacks_;
  std::vector<std::function<uint64_t()>> alarms_;
  uint32_t current_ = 0;
  uint32_t last_run_ = 0;
  uint32_t next_number_ = 1;
  uint64_t idle_us_ = 0;
};

}  // namespace bench
