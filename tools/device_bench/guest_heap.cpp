#include "guest_heap.h"

#include <string.h>

#include <algorithm>

#include "fail.h"

namespace bench {
namespace {

constexpr uint32_t kBase = 0x20000000;
constexpr uint32_t kRoom = 64u << 20;

}  // namespace

GuestHeap::GuestHeap(Machine& machine) : machine_(machine), next_(kBase) {
  machine.Map(kBase, kRoom);
}

uint32_t GuestHeap::Take(uint32_t bytes) {
  const uint32_t block = next_;
  if (bytes > kBase + kRoom - next_ - 16) Fail("the heap is used up");
  next_ += (bytes + 16) & ~7u;
  blocks_[block] = bytes;
  bytes_ += bytes;
  peak_bytes_ = std::max(peak_bytes_, bytes_);
  return block;
}

uint32_t GuestHeap::Resize(uint32_t block, uint32_t bytes) {
  const uint32_t moved = Take(bytes);
  if (block == 0) return moved;
  const uint32_t kept = std::min(blocks_[block], bytes);
  memcpy(machine_.At(moved, kept), machine_.At(block, kept), kept);
  Give(block);
  return moved;
}

void GuestHeap::Give(uint32_t block) {
  if (block == 0) return;
  const auto found = blocks_.find(block);
  if (found == blocks_.end()) Fail("free of %#x, which is no block", block);
  bytes_ -= found->second;
  blocks_.erase(found);
}

}  // namespace bench
