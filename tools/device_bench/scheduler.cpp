#include "scheduler.h"

#include <string.h>

#include <algorithm>

#include "fail.h"

namespace bench {
namespace {

constexpr uint32_t kMain = 0;
constexpr uint32_t kStacks = 0x60000000;
constexpr uint32_t kStackStride = 0x20000;  // half of it is a hole below the stack
constexpr uint32_t kStackBytes = 0x10000;   // what the system gives to a thread
constexpr uint8_t kUntouched = 0xA5;

}  // namespace

Scheduler::Scheduler(Machine& machine) : machine_(machine) {
  threads_[kMain];
}

Scheduler::~Scheduler() {
  for (auto& [number, thread] : threads_) {
    if (thread.context) uc_context_free(thread.context);
  }
}

uint64_t Scheduler::now() const {
  const double busy = static_cast<double>(machine_.instructions());
  return idle_us_ + static_cast<uint64_t>(busy * kCyclesPerInstruction / kDeviceMhz);
}

uint32_t Scheduler::TakeStack() {
  if (!free_stacks_.empty()) {
    const uint32_t stack = free_stacks_.back();
    free_stacks_.pop_back();
    return stack;
  }
  const uint32_t stack = kStacks + kStackStride * static_cast<uint32_t>(stacks_.size());
  machine_.Map(stack, kStackBytes);
  memset(machine_.At(stack, kStackBytes), kUntouched, kStackBytes);
  stacks_.push_back(stack);
  return stack;
}

uint32_t Scheduler::deepest_stack() const {
  uint32_t deepest = 0;
  for (const uint32_t stack : stacks_) {
    const uint8_t* memory = machine_.At(stack, kStackBytes);
    uint32_t untouched = 0;
    while (untouched < kStackBytes && memory[untouched] == kUntouched) ++untouched;
    deepest = std::max(deepest, kStackBytes - untouched);
  }
  return deepest;
}

Scheduler::Thread& Scheduler::Prepare(uint32_t number, uint32_t function,
                                      const std::vector<uint32_t>& arguments) {
  Thread& thread = threads_[number];
  if (thread.stack == 0) thread.stack = TakeStack();
  if (!thread.context && uc_context_alloc(machine_.engine(), &thread.context) != UC_ERR_OK) {
    Fail("no memory for a thread's registers");
  }
  uc_context* running = nullptr;
  if (uc_context_alloc(machine_.engine(), &running) != UC_ERR_OK) Fail("no memory for registers");
  uc_context_save(machine_.engine(), running);
  const uint32_t on_stack =
      arguments.size() > 4 ? static_cast<uint32_t>(arguments.size() - 4) * 4 : 0;
  const uint32_t sp = (thread.stack + kStackBytes - 64 - on_stack) & ~7u;
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (i < 4) {
      machine_.SetRegister(UC_ARM_REG_R0 + static_cast<int>(i), arguments[i]);
    } else {
      machine_.SetWord(sp + 4 * static_cast<uint32_t>(i - 4), arguments[i]);
    }
  }
  machine_.SetRegister(UC_ARM_REG_SP, sp);
  machine_.SetRegister(UC_ARM_REG_LR, Machine::kReturn);
  uc_context_save(machine_.engine(), thread.context);
  uc_context_restore(machine_.engine(), running);
  uc_context_free(running);
  thread.resume = function;
  thread.state = State::kReady;
  return thread;
}

uint32_t Scheduler::Start(uint32_t function, uint32_t parameter) {
  const uint32_t number = next_number_++;
  Prepare(number, function, {parameter});
  return number;
}

bool Scheduler::HasEnded(uint32_t thread) const {
  const auto found = threads_.find(thread);
  return found == threads_.end() || found->second.state == State::kEnded;
}

uint32_t Scheduler::running() const {
  uint32_t count = 0;
  for (const auto& [number, thread] : threads_) count += number != kMain && !HasEnded(number);
  return count;
}

void Scheduler::Wait(Ready ready, uint64_t deadline, uint32_t late) {
  Thread& thread = threads_[current_];
  thread.ready = std::move(ready);
  thread.deadline = deadline;
  thread.late = late;
  thread.state = State::kWaiting;
  machine_.Stop();
}

bool Scheduler::Wake(Thread& thread, uint32_t* result) {
  if (thread.ready(result)) return true;
  *result = thread.late;
  return thread.deadline <= now();
}

void Scheduler::Run(uint32_t number, bool has_result, uint32_t result) {
  Thread& thread = threads_[number];
  current_ = last_run_ = number;
  uc_context_restore(machine_.engine(), thread.context);
  if (has_result) machine_.SetRegister(UC_ARM_REG_R0, result);
  thread.state = State::kReady;
  thread.ready = nullptr;
  if (machine_.Run(thread.resume)) {
    thread.state = State::kEnded;
    if (number != kMain) {
      free_stacks_.push_back(thread.stack);
      uc_context_free(thread.context);
      threads_.erase(number);
    }
  } else {
    uc_context_save(machine_.engine(), thread.context);
    thread.resume = machine_.Register(UC_ARM_REG_LR);  // behind the call that waits
  }
  current_ = kMain;
}

bool Scheduler::Step(bool with_main) {
  std::vector<uint32_t> order;
  for (const auto& [number, thread] : threads_) {
    if ((with_main || number != kMain) && thread.state != State::kEnded) order.push_back(number);
  }
  // Round robin: those behind the thread that ran last come first.
  std::stable_partition(order.begin(), order.end(), [this](uint32_t n) { return n > last_run_; });
  for (const uint32_t number : order) {
    Thread& thread = threads_[number];
    uint32_t result = 0;
    const bool waited = thread.state == State::kWaiting;
    if (waited && !Wake(thread, &result)) continue;
    Run(number, waited, result);
    return true;
  }
  return false;
}

bool Scheduler::AdvanceClock(bool with_main, uint64_t limit) {
  uint64_t next = limit;
  for (const auto& alarm : alarms_) {
    const uint64_t at = alarm();
    if (at > now()) next = std::min(next, at);  // what is past woke whom it concerned
  }
  for (const auto& [number, thread] : threads_) {
    if (thread.state == State::kWaiting && (with_main || number != kMain)) {
      next = std::min(next, thread.deadline);
    }
  }
  if (next == kNever) return false;
  if (next > now()) idle_us_ += next - now();
  return true;
}

uint32_t Scheduler::Call(uint32_t function, const std::vector<uint32_t>& arguments) {
  Prepare(kMain, function, arguments);
  last_run_ = next_number_;  // the main thread is the first of the round
  while (threads_[kMain].state != State::kEnded) {
    if (!Step(true) && !AdvanceClock(true, kNever)) {
      Fail("deadlock: the host's call waits and no thread can go on");
    }
  }
  return machine_.Register(UC_ARM_REG_R0);
}

bool Scheduler::RunUntil(const std::function<bool()>& done, uint64_t limit) {
  const uint64_t end = now() + limit;
  while (!done()) {
    if (now() >= end) return false;
    if (!Step(false)) AdvanceClock(false, end);
  }
  return true;
}

}  // namespace bench
