#pragma once

#include <string.h>

#include "base/bytes/byte_source.h"

namespace kelvo {

// Bytes in memory; borrowed, they must outlive the source.
class MemorySource final : public ByteSource {
 public:
  MemorySource(const void* data, size_t bytes) noexcept
      : data_(static_cast<const uint8_t*>(data)), bytes_(bytes) {}

  uint64_t SizeBytes() noexcept override { return bytes_; }

  ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept override {
    if (offset > bytes_ || bytes > bytes_ - offset) return ReadResult::kEnd;
    if (bytes != 0) memcpy(dst, data_ + offset, bytes);
    return ReadResult::kOk;
  }

  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    const uint64_t left = offset < bytes_ ? bytes_ - offset : 0;
    *got = bytes < left ? bytes : static_cast<size_t>(left);
    if (*got != 0) memcpy(dst, data_ + offset, *got);
    return ReadResult::kOk;
  }

 private:
  const uint8_t* data_;
  size_t bytes_;
};

}  // namespace kelvo
