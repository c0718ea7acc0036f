// Memory for the Vorbis decoder. The decoder takes for granted that it always gets memory; the
// library must not. So each stream has a heap of its own, and the decoder is run so that a request
// that fails abandons the whole call; what it held is then freed at once.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo {

class DecoderHeap {
 public:
  // Called once before the first and once after the last use in the module's life, by the owner of
  // the streams. Without a successful attach every Run fails.
  static void AttachModule() noexcept;
  static void DetachModule() noexcept;

  DecoderHeap() noexcept;
  ~DecoderHeap() { FreeAll(); }
  DecoderHeap(const DecoderHeap&) = delete;
  DecoderHeap& operator=(const DecoderHeap&) = delete;

  // Runs `work` with this heap as the decoder's. False when memory ran out on the way (or this
  // heap has been given up before): the decoder's state is lost, nothing may be called with it any
  // more. Its memory stays until this heap goes, because others may still be reading what was
  // complete before (comments). `work` must own nothing that needs a destructor.
  template <class Work>
  [[nodiscard]] bool Run(Work work) noexcept {
    return RunErased([](void* context) { (*static_cast<Work*>(context))(); }, &work);
  }

  // For the decoder's calls alone.
  void* Take(size_t bytes) noexcept;
  void* Resize(void* block, size_t bytes) noexcept;
  void Give(void* block) noexcept;
  void* Scratch(size_t bytes) noexcept;  // until the innermost Run ends
  static DecoderHeap* Current() noexcept;

 private:
  struct Block {
    Block* previous;
    Block* next;
    size_t bytes;
  };
  static constexpr size_t kHeader = (sizeof(Block) + 15) & ~size_t{15};

  bool RunErased(void (*work)(void*), void* context) noexcept;
  [[noreturn]] void Abandon() noexcept;
  void FreeAll() noexcept;
  void FreeRing(Block* ring) noexcept;
  Block* NewBlock(size_t bytes) noexcept;
  static void Link(Block* ring, Block* block) noexcept;
  static void Unlink(Block* block) noexcept;
  static Block* BlockOf(void* payload) noexcept;
  bool Accept(size_t bytes) const noexcept;

  Block blocks_;      // ring of the blocks that the decoder gives back
  Block scratch_;     // ring of those that live as long as one Run
  size_t bytes_ = 0;  // taken and not given back
  bool given_up_ = false;
  void* jump_[5];
};

}  // namespace kelvo
