#include "guest_heap.h"

#include <string.h>

#include <algorithm>

#include "fail.h"

namespace bench {
namespace {

constexpr uint32_t kBase = 0x20000000;
constexpr uint32_t kRoom = 64u << 20;
constexpr int kNewByte = 0xCD;
constexpr int kFreedByte = 0xDD;

// A gap of 8 bytes keeps neighbours apart.
uint32_t Room(uint32_t bytes) {
  return (bytes + 8 + 7) & ~7u;
}

}  // namespace

GuestHeap::GuestHeap(Machine& machine) : machine_(machine) {
  machine.Map(kBase, kRoom);
  free_[kBase] = kRoom;
}

uint32_t GuestHeap::Take(uint32_t bytes) {
  ++requests_;
  if (fail_from_ >= 0 && fail_from_-- == 0) {
    fail_from_ = 0;
    return 0;
  }
  if (bytes > kRoom) return 0;
  const uint32_t room = Room(bytes);
  for (auto it = free_.begin(); it != free_.end(); ++it) {
    if (it->second < room) continue;
    const auto [address, size] = *it;
    free_.erase(it);
    if (size > room) free_[address + room] = size - room;
    used_[address] = bytes;
    bytes_ += bytes;
    peak_bytes_ = std::max(peak_bytes_, bytes_);
    memset(machine_.At(address, bytes), kNewByte, bytes);
    return address;
  }
  return 0;
}

uint32_t GuestHeap::TakeZeroed(uint32_t bytes) {
  const uint32_t block = Take(bytes);
  if (block != 0) memset(machine_.At(block, bytes), 0, bytes);
  return block;
}

uint32_t GuestHeap::Resize(uint32_t block, uint32_t bytes) {
  if (block == 0) return Take(bytes);
  const auto found = used_.find(block);
  if (found == used_.end()) Fail("realloc of %#x, which is no block", block);
  const uint32_t kept = std::min(found->second, bytes);
  const uint32_t moved = Take(bytes);
  if (moved == 0) return 0;
  memcpy(machine_.At(moved, kept), machine_.At(block, kept), kept);
  Give(block);
  return moved;
}

void GuestHeap::Give(uint32_t block) {
  if (block == 0) return;
  const auto found = used_.find(block);
  if (found == used_.end()) Fail("free of %#x, which is no block", block);
  const uint32_t bytes = found->second;
  used_.erase(found);
  bytes_ -= bytes;
  memset(machine_.At(block, bytes), kFreedByte, bytes);
  auto placed = free_.emplace(block, Room(bytes)).first;
  const auto next = std::next(placed);
  if (next != free_.end() && placed->first + placed->second == next->first) {
    placed->second += next->second;
    free_.erase(next);
  }
  if (placed != free_.begin()) {
    const auto previous = std::prev(placed);
    if (previous->first + previous->second == placed->first) {
      previous->second += placed->second;
      free_.erase(placed);
    }
  }
}

}  // namespace bench
