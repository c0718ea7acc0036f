// A MediaReader over bytes in memory, with faults and a log of the calls that close and open it.
#pragma once

#include <string.h>

#include <cstdio>
#include <string>
#include <vector>

#include "kelvo/media_reader.h"

namespace kelvo::test {

class MemoryReader final : public MediaReader {
 public:
  explicit MemoryReader(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

  int fail_reads_from = -1;  // the n-th read and all later ones fail
  bool fail_seeks = false;
  bool fail_open = false;
  bool refuse_release = false;
  int32_t close_result = 1;
  int reads = 0;
  std::string log;  // "open", "close", "release", each followed by a blank

  int64_t Seek(int64_t offset, uint32_t origin) noexcept override {
    if (fail_seeks) return kSeekFailed;
    const int64_t size = static_cast<int64_t>(bytes_.size());
    const int64_t base = origin == kSeekStart ? 0 : origin == kSeekCurrent ? position_ : size;
    if (base + offset < 0) return kSeekFailed;
    return position_ = base + offset;
  }
  int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept override {
    *bytes_read = 0;
    if (fail_reads_from >= 0 && reads++ >= fail_reads_from) return 0;
    const int64_t size = static_cast<int64_t>(bytes_.size());
    const int64_t left = position_ < size ? size - position_ : 0;
    *bytes_read = left < bytes ? static_cast<uint32_t>(left) : bytes;
    if (*bytes_read > 0) memcpy(destination, bytes_.data() + position_, *bytes_read);
    position_ += *bytes_read;
    return 1;
  }
  int32_t Close() noexcept override {
    log += "close ";
    return close_result;
  }
  int32_t Open(const wchar_t*, uint32_t) noexcept override {
    log += "open ";
    position_ = 0;
    return !fail_open;
  }
  int32_t Release(HostWord, HostWord) noexcept override {
    log += "release ";
    return !refuse_release;
  }

 private:
  std::vector<char> bytes_;
  int64_t position_ = 0;
};

}  // namespace kelvo::test
