#include "input/vorbis/decoder_heap.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/sync/thread.h"
#include "input/vorbis/decoder_config/ogg/os_types.h"

namespace kelvo {
namespace {

// A stream that wants more is hostile, or nothing for the device: real ones need well below one
// megabyte, and a picture among the comments is held twice while it is read.
constexpr size_t kMostBytes = 16u << 20;
constexpr size_t kBytesAround = 4 * sizeof(void*);  // what a block costs beside its own bytes
// Above this size a block that grows gets more than it asked for: a packet of many pages grows page
// by page.
constexpr size_t kLargeBytes = 64u << 10;
constexpr size_t kFirstPlaces = 64;

ThreadSlot g_current;  // the heap whose Run is the innermost on this thread

}  // namespace

void DecoderHeap::AttachModule() noexcept {
  g_current.Attach();
}
void DecoderHeap::DetachModule() noexcept {
  g_current.Detach();
}

DecoderHeap* DecoderHeap::Current() noexcept {
  return static_cast<DecoderHeap*>(g_current.Get());
}

DecoderHeap::~DecoderHeap() {
  for (size_t i = 0; i < places_; ++i) HeapFree(blocks_[i].payload);
  HeapFree(blocks_);
}

// The compiler's own jump is used: the C library's unwinds on some targets, and the device's
// library is not known to have one. Both calls must not be inlined into a common caller.
[[gnu::noinline]] bool DecoderHeap::RunErased(void (*work)(void*), void* context) noexcept {
  if (abandoned_) return false;
  void* const outer = g_current.Get();
  if (!g_current.Set(this)) return false;
  empty_reads_ = 0;
  if (__builtin_setjmp(jump_) == 0) {
    work(context);
  } else {
    abandoned_ = true;
  }
  g_current.Set(outer);
  FreeScratch();
  return !abandoned_;
}

[[gnu::noinline]] void DecoderHeap::Abandon() noexcept {
  __builtin_longjmp(jump_, 1);
}

bool DecoderHeap::Fits(size_t bytes) const noexcept {
  return bytes <= kMostBytes && bytes_ <= kMostBytes - bytes &&
         kBytesAround <= kMostBytes - bytes - bytes_;
}

void* DecoderHeap::Obtain(size_t bytes) noexcept {
  void* payload = Fits(bytes) ? HeapAllocate(bytes) : nullptr;
  if (!payload) Abandon();
  bytes_ += bytes + kBytesAround;
  return payload;
}

void* DecoderHeap::Allocate(size_t bytes) noexcept {
  ReserveOne();
  void* payload = Obtain(bytes);
  Insert({payload, bytes});
  return payload;
}

void* DecoderHeap::AllocateScratch(size_t bytes) noexcept {
  if (!scratch_.Reserve(scratch_.size() + 1)) Abandon();
  void* payload = Obtain(bytes);
  static_cast<void>(scratch_.Append({payload, bytes}));
  return payload;
}

void* DecoderHeap::Resize(void* payload, size_t bytes) noexcept {
  if (!payload) return Allocate(bytes);
  Block* block = Find(payload);
  if (bytes <= block->bytes) return payload;
  const size_t old_bytes = block->bytes + kBytesAround;
  bytes_ -= old_bytes;
  const size_t generous = bytes < kLargeBytes ? bytes : bytes + bytes / 2;
  if (Fits(generous)) bytes = generous;
  void* resized = Fits(bytes) ? HeapResize(payload, bytes) : nullptr;
  if (!resized) {
    bytes_ += old_bytes;
    Abandon();
  }
  bytes_ += bytes + kBytesAround;
  Remove(block);
  Insert({resized, bytes});
  return resized;
}

void DecoderHeap::Free(void* payload) noexcept {
  if (!payload) return;
  Block* block = Find(payload);
  bytes_ -= block->bytes + kBytesAround;
  Remove(block);
  HeapFree(payload);
}

void DecoderHeap::FreeScratch() noexcept {
  for (const Block& block : scratch_) {
    bytes_ -= block.bytes + kBytesAround;
    HeapFree(block.payload);
  }
  static_cast<void>(scratch_.Resize(0));
}

size_t DecoderHeap::Home(const void* payload) const noexcept {
  // Blocks are aligned to 8 bytes at least.
  return (reinterpret_cast<uintptr_t>(payload) >> 3) * 2654435761u >> 7 & (places_ - 1);
}

// A block that is not (or no longer) the decoder's ends its call.
DecoderHeap::Block* DecoderHeap::Find(const void* payload) noexcept {
  if (places_ == 0) Abandon();
  size_t at = Home(payload);
  while (blocks_[at].payload != payload) {
    if (!blocks_[at].payload) Abandon();
    at = (at + 1) & (places_ - 1);
  }
  return &blocks_[at];
}

void DecoderHeap::Insert(Block block) noexcept {
  size_t at = Home(block.payload);
  while (blocks_[at].payload) at = (at + 1) & (places_ - 1);
  blocks_[at] = block;
  ++used_;
}

// Moves the blocks behind it that are not at home into the gap, so that no search ends there.
void DecoderHeap::Remove(Block* block) noexcept {
  const size_t mask = places_ - 1;
  size_t gap = static_cast<size_t>(block - blocks_);
  for (size_t at = (gap + 1) & mask; blocks_[at].payload; at = (at + 1) & mask) {
    const size_t from_home = (at - Home(blocks_[at].payload)) & mask;
    if (from_home < ((at - gap) & mask)) continue;
    blocks_[gap] = blocks_[at];
    gap = at;
  }
  blocks_[gap] = {nullptr, 0};
  --used_;
}

// A third of the places stays free.
void DecoderHeap::ReserveOne() noexcept {
  if ((used_ + 1) * 3 <= places_ * 2) return;
  const size_t old_places = places_;
  const size_t new_places = old_places == 0 ? kFirstPlaces : old_places * 2;
  Block* grown = static_cast<Block*>(HeapAllocateZeroed(new_places, sizeof(Block)));
  if (!grown) Abandon();
  Block* old = blocks_;
  blocks_ = grown;
  places_ = new_places;
  used_ = 0;
  for (size_t i = 0; i < old_places; ++i) {
    if (old[i].payload) Insert(old[i]);
  }
  HeapFree(old);
}

}  // namespace kelvo

using kelvo::DecoderHeap;

void* KelvoDecoderMalloc(size_t bytes) {
  return DecoderHeap::Current()->Allocate(bytes);
}

void* KelvoDecoderCalloc(size_t count, size_t bytes_each) {
  const bool overflows = bytes_each != 0 && count > static_cast<size_t>(-1) / bytes_each;
  const size_t bytes = overflows ? static_cast<size_t>(-1) : count * bytes_each;
  void* block = DecoderHeap::Current()->Allocate(bytes);
  return memset(block, 0, bytes);
}

void* KelvoDecoderRealloc(void* block, size_t bytes) {
  return DecoderHeap::Current()->Resize(block, bytes);
}

void KelvoDecoderFree(void* block) {
  DecoderHeap::Current()->Free(block);
}

void* KelvoDecoderScratch(size_t bytes) {
  return DecoderHeap::Current()->AllocateScratch(bytes);
}

void KelvoDecoderAbandon(void) {
  DecoderHeap::Current()->Abandon();
}
