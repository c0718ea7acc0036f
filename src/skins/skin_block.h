#pragma once

#include <stddef.h>
#include <stdint.h>

#include <utility>

#include "base/memory/heap.h"

namespace kelvo {

// A skin file's bytes on their way to the host, which frees the block itself.
class SkinBlock {
 public:
  SkinBlock() noexcept = default;
  SkinBlock(SkinBlock&& other) noexcept
      : bytes_(std::exchange(other.bytes_, nullptr)), size_(std::exchange(other.size_, 0)) {}
  SkinBlock& operator=(SkinBlock&&) = delete;
  ~SkinBlock() { HeapFree(bytes_); }

  // A block of zeros; false when memory is out. For an empty block.
  [[nodiscard]] bool Allocate(uint32_t size) noexcept {
    bytes_ = HeapAllocateZeroed(size, 1);
    size_ = bytes_ ? size : 0;
    return bytes_ != nullptr;
  }

  void* data() const noexcept { return bytes_; }
  uint32_t size() const noexcept { return size_; }

  // Hands the block over; null when there is none. *size gets its size either way.
  [[nodiscard]] void* Release(uint32_t* size) noexcept {
    *size = std::exchange(size_, 0);
    return std::exchange(bytes_, nullptr);
  }

 private:
  void* bytes_ = nullptr;
  uint32_t size_ = 0;
};

}  // namespace kelvo
