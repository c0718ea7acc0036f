// Memory for the Vorbis decoder. The decoder takes for granted that it always gets memory; the
// library must not. So each stream has a heap of its own, and the decoder is run so that a request
// that fails abandons the whole call; what it held is freed with the heap. What is known about the
// blocks lies apart from them: a write past a block's end does not reach it.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/memory/array.h"

namespace kelvo {

class DecoderHeap {
 public:
  // Called once before the first and once after the last use in the module's life, by the owner of
  // the streams. Without a successful attach every Run fails.
  static void AttachModule() noexcept;
  static void DetachModule() noexcept;

  DecoderHeap() noexcept = default;
  ~DecoderHeap();
  DecoderHeap(const DecoderHeap&) = delete;
  DecoderHeap& operator=(const DecoderHeap&) = delete;

  // Runs `work` with this heap as the decoder's. False when the call was abandoned (or an earlier
  // one): the decoder's state is lost, nothing may be called with it any more. Its memory stays
  // until this heap goes, because others may still be reading what was complete before (comments).
  // `work` must own nothing that needs a destructor.
  template <class Work>
  [[nodiscard]] bool Run(Work work) noexcept {
    return RunErased([](void* context) { (*static_cast<Work*>(context))(); }, &work);
  }

  // Within Run, the heap of the innermost one on this thread. The decoder's calls end up here.
  static DecoderHeap* Current() noexcept;
  void* Allocate(size_t bytes) noexcept;
  void* Resize(void* payload, size_t bytes) noexcept;
  void Free(void* payload) noexcept;
  void* AllocateScratch(size_t bytes) noexcept;  // until Run ends
  [[noreturn]] void Abandon() noexcept;

  // How many reads in a row have brought nothing since Run began, with this one.
  uint32_t CountEmptyReads(bool empty) noexcept {
    return empty_reads_ = empty ? empty_reads_ + 1 : 0;
  }

 private:
  struct Block {
    void* payload;
    size_t bytes;  // at least as many as were asked for
  };

  bool RunErased(void (*work)(void*), void* context) noexcept;
  bool Fits(size_t bytes) const noexcept;
  void* Obtain(size_t bytes) noexcept;
  size_t Home(const void* payload) const noexcept;
  Block* Find(const void* payload) noexcept;
  void Insert(Block block) noexcept;
  void Remove(Block* block) noexcept;
  void ReserveOne() noexcept;
  void FreeScratch() noexcept;

  // Open addressing by the payload's address; a null payload is a free place. The number of places
  // is a power of two, or none.
  Block* blocks_ = nullptr;
  size_t places_ = 0;
  size_t used_ = 0;
  Array<Block> scratch_;
  size_t bytes_ = 0;  // of all blocks, with what they cost beside
  uint32_t empty_reads_ = 0;
  bool abandoned_ = false;
  void* jump_[5];
};

}  // namespace kelvo
