// How code of this machine and the device's call each other: addresses that stand for functions of
// the device's library wherever it hands one out. Code of this machine that calls one enters the
// emulator; the emulated code, which sees other bytes at the same address, jumps to the function.
#pragma once

#include <stdint.h>

#include <mutex>

#include "functions.h"

namespace bridge {

class Stubs {
 public:
  struct Target {
    uint32_t function;
    uint32_t words;
    Convention convention;
  };

  Stubs();
  ~Stubs();
  Stubs(const Stubs&) = delete;
  Stubs& operator=(const Stubs&) = delete;

  // The same address for the same function and convention. Any thread.
  uint32_t Add(const Target& target);
  bool Contains(uint32_t address) const;
  // What stands behind an address that Add gave.
  const Target& At(uint32_t address) const;
  // Where the emulated code finds the page at this address of a stub.
  uint32_t EmulatedPage(uint32_t page) const;

 private:
  static constexpr int kCapacity = 1024;

  uint8_t* code_;      // of this machine
  uint8_t* emulated_;  // of the device
  Target targets_[kCapacity];
  int count_ = 0;
  std::mutex lock_;  // of count_ and what lies below it
};

// The other way.
// More than any function takes: the callee reads those that it knows of.
constexpr uint32_t kHostWords = 17;

// Puts 16 words on the stack, `object` where a member function expects it, and calls; whether the
// callee or the caller removes the words makes no difference. Both results: edx:eax.
extern "C" uint64_t CallHost(uint32_t function, const uint32_t* words, uint32_t object);

}  // namespace bridge
