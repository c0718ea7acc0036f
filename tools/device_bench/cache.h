// The processor's caches and its write buffer. Addresses are virtual, as the caches' are.
#pragma once

#include <stdint.h>

#include <vector>

namespace bench {

// 32 ways, replaced in turn; lines of 32 bytes.
class Cache {
 public:
  static constexpr uint32_t kLineBytes = 32;
  static constexpr uint32_t kWays = 32;

  explicit Cache(uint32_t bytes) : sets_(bytes / (kLineBytes * kWays)) {}

  // Whether the line is there; a store leaves it to be written back.
  bool Find(uint32_t address, bool store) {
    Set& set = SetOf(address);
    const uint32_t line = address / kLineBytes;
    for (uint32_t i = 0; i < kWays; ++i) {
      Line& candidate = set.lines[(set.latest + i) % kWays];
      if (candidate.number != line) continue;
      candidate.dirty |= store;
      set.latest = (set.latest + i) % kWays;
      return true;
    }
    return false;
  }

  // Takes a line in; true when the one that it replaces must be written back.
  bool Fill(uint32_t address) {
    Set& set = SetOf(address);
    set.latest = set.next;
    Line& line = set.lines[set.next];
    set.next = (set.next + 1) % kWays;
    const bool dirty = line.dirty;
    line = {address / kLineBytes, false};
    return dirty;
  }

 private:
  struct Line {
    uint32_t number = ~0u;
    bool dirty = false;
  };
  struct Set {
    Line lines[kWays];
    uint32_t next = 0;    // to be replaced
    uint32_t latest = 0;  // found; most searches end there
  };
  Set& SetOf(uint32_t address) { return sets_[address / kLineBytes % sets_.size()]; }

  std::vector<Set> sets_;
};

// Eight blocks of 16 bytes on their way to memory, one after the other.
class WriteBuffer {
 public:
  static constexpr uint32_t kBlockBytes = 16;

  explicit WriteBuffer(double cycles_each) : cycles_each_(cycles_each) {}

  // The time when the processor goes on.
  double Put(uint32_t address, double now) {
    const uint32_t block = address / kBlockBytes;
    double& latest = done_[(next_ + kBlocks - 1) % kBlocks];
    if (block == latest_block_ && latest > now) return now;
    latest_block_ = block;
    double& slot = done_[next_];
    if (slot > now) now = slot;  // full
    slot = (latest > now ? latest : now) + cycles_each_;
    next_ = (next_ + 1) % kBlocks;
    return now;
  }

 private:
  static constexpr uint32_t kBlocks = 8;
  const double cycles_each_;
  double done_[kBlocks] = {};
  uint32_t next_ = 0;
  uint32_t latest_block_ = ~0u;
};

}  // namespace bench
