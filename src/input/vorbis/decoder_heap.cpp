#include "input/vorbis/decoder_heap.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/sync/thread_slot.h"
#include "input/vorbis/decoder_config/ogg/os_types.h"

namespace kelvo {
namespace {

// A stream that wants more is hostile: real ones need well below one megabyte, and a huge comment
// is held a few times over while it is read.
constexpr size_t kMostBytes = 96u << 20;

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

DecoderHeap::DecoderHeap() noexcept
    : blocks_{&blocks_, &blocks_, 0}, scratch_{&scratch_, &scratch_, 0} {}

// The compiler's own jump is used: the C library's unwinds on some targets, and the device's
// library is not known to have one. Both calls must not be inlined into a common caller.
[[gnu::noinline]] bool DecoderHeap::RunErased(void (*work)(void*), void* context) noexcept {
  if (given_up_) return false;
  void* const outer = g_current.Get();
  if (!g_current.Set(this)) return false;
  if (__builtin_setjmp(jump_) == 0) {
    work(context);
  } else {
    given_up_ = true;
  }
  g_current.Set(outer);
  FreeRing(&scratch_);
  return !given_up_;
}

[[gnu::noinline]] void DecoderHeap::Abandon() noexcept {
  __builtin_longjmp(jump_, 1);
}

void DecoderHeap::Link(Block* ring, Block* block) noexcept {
  block->previous = ring;
  block->next = ring->next;
  ring->next->previous = block;
  ring->next = block;
}

void DecoderHeap::Unlink(Block* block) noexcept {
  block->previous->next = block->next;
  block->next->previous = block->previous;
}

DecoderHeap::Block* DecoderHeap::BlockOf(void* payload) noexcept {
  return reinterpret_cast<Block*>(static_cast<char*>(payload) - kHeader);
}

bool DecoderHeap::Accept(size_t bytes) const noexcept {
  return bytes <= kMostBytes && bytes_ <= kMostBytes - bytes;
}

DecoderHeap::Block* DecoderHeap::NewBlock(size_t bytes) noexcept {
  Block* block = Accept(bytes) ? static_cast<Block*>(HeapTake(kHeader + bytes)) : nullptr;
  if (!block) Abandon();
  block->bytes = bytes;
  bytes_ += bytes;
  return block;
}

void* DecoderHeap::Take(size_t bytes) noexcept {
  Block* block = NewBlock(bytes);
  Link(&blocks_, block);
  return reinterpret_cast<char*>(block) + kHeader;
}

void* DecoderHeap::Scratch(size_t bytes) noexcept {
  Block* block = NewBlock(bytes);
  Link(&scratch_, block);
  return reinterpret_cast<char*>(block) + kHeader;
}

void* DecoderHeap::Resize(void* payload, size_t bytes) noexcept {
  if (!payload) return Take(bytes);
  Block* block = BlockOf(payload);
  bytes_ -= block->bytes;
  Unlink(block);
  Block* resized =
      Accept(bytes) ? static_cast<Block*>(HeapResize(block, kHeader + bytes)) : nullptr;
  if (!resized) {
    Link(&blocks_, block);
    Abandon();
  }
  resized->bytes = bytes;
  bytes_ += bytes;
  Link(&blocks_, resized);
  return reinterpret_cast<char*>(resized) + kHeader;
}

void DecoderHeap::Give(void* payload) noexcept {
  if (!payload) return;
  Block* block = BlockOf(payload);
  bytes_ -= block->bytes;
  Unlink(block);
  HeapGive(block);
}

void DecoderHeap::FreeRing(Block* ring) noexcept {
  while (ring->next != ring) {
    Block* block = ring->next;
    bytes_ -= block->bytes;
    Unlink(block);
    HeapGive(block);
  }
}

void DecoderHeap::FreeAll() noexcept {
  FreeRing(&scratch_);
  FreeRing(&blocks_);
}

}  // namespace kelvo

using kelvo::DecoderHeap;

void* KelvoDecoderMalloc(size_t bytes) {
  return DecoderHeap::Current()->Take(bytes);
}

void* KelvoDecoderCalloc(size_t count, size_t bytes_each) {
  const bool overflows = bytes_each != 0 && count > static_cast<size_t>(-1) / bytes_each;
  const size_t bytes = overflows ? static_cast<size_t>(-1) : count * bytes_each;
  void* block = DecoderHeap::Current()->Take(bytes);
  return memset(block, 0, bytes);
}

void* KelvoDecoderRealloc(void* block, size_t bytes) {
  return DecoderHeap::Current()->Resize(block, bytes);
}

void KelvoDecoderFree(void* block) {
  DecoderHeap::Current()->Give(block);
}

void* KelvoDecoderScratch(size_t bytes) {
  return DecoderHeap::Current()->Scratch(bytes);
}
