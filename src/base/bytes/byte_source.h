// Random access to bytes: a file in the library, memory in tests.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo {

enum class [[nodiscard]] ReadResult{
    kOk,
    kEnd,     // the range lies (partly) behind the last byte
    kFailed,  // the medium failed
};

// One thread at a time.
class ByteSource {
 public:
  virtual uint64_t SizeBytes() noexcept = 0;

  // Fills all of dst, or leaves it unspecified and says why.
  virtual ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept = 0;

  // Reads up to `bytes` bytes; *got tells how many. A range that starts at or behind the end gives
  // kOk with *got == 0. On kFailed *got is 0.
  virtual ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept = 0;

 protected:
  ~ByteSource() = default;
};

}  // namespace kelvo
