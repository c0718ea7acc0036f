// Faults that the emulator does not see.
#pragma once

namespace bridge {

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
