#pragma once

#include <string.h>

#include <string>

#include "base/bytes/memory_source.h"

namespace kelvo::test {

// Bytes in memory whose reads fail from the n-th on (counted from 0; negative: never).
class FailingSource final : public ByteSource {
 public:
  FailingSource(const std::string& bytes, long successes)
      : source_(bytes.data(), bytes.size()), left_(successes) {}

  uint64_t SizeBytes() noexcept override { return source_.SizeBytes(); }
  ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept override {
    if (!Fails()) return source_.ReadAt(offset, dst, bytes);
    memset(dst, 'x', bytes);  // unspecified
    return ReadResult::kFailed;
  }
  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    *got = 0;
    return Fails() ? ReadResult::kFailed : source_.ReadSome(offset, dst, bytes, got);
  }

  // False once a sweep has come past the last read.
  bool triggered() const { return triggered_; }
  long reads() const { return reads_; }

 private:
  bool Fails() {
    ++reads_;
    if (left_ < 0) return false;
    triggered_ |= left_ == 0;
    if (left_ > 0) --left_;
    return triggered_;
  }

  MemorySource source_;
  long left_;
  long reads_ = 0;
  bool triggered_ = false;
};

}  // namespace kelvo::test
