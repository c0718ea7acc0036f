// The end of a run: what the device would not have done, or would have done otherwise.
#pragma once

namespace bridge {

// Writes "device bridge: " and the text on stderr and ends the process, with exit code 99.
[[noreturn]] void Fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Faults that the emulator does not see.
//
// While an object lives, a fault within translated code, or of this machine's code that runs into
// the device's, ends the run with a message.
class FaultWatch {
 public:
  FaultWatch();
  ~FaultWatch();
  FaultWatch(const FaultWatch&) = delete;
  FaultWatch& operator=(const FaultWatch&) = delete;

 private:
  void* handler_;
};

}  // namespace bridge
