// A MediaReader over bytes in memory, with faults and a log of the calls that close and open it.
#pragma once

#include <string.h>

#include <cstdio>
#include <string>
#include <vector>

#include "kelvo/media_reader.h"

namespace kelvo::test {

class MemoryReader : public MediaReader {
 public:
  explicit MemoryReader(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

  int fail_reads_from = -1;           // the n-th read and later ones fail, though with a count
  int failing_reads = INT32_MAX;      // as many
  int failing_seeks = 0;              // so many more seeks fail; below 0: all
  int64_t failed_seek = kSeekFailed;  // what such a seek answers
  bool fail_open = false;
  bool refuse_release = false;
  int32_t close_result = 1;
  int reads = 0;
  uint64_t bytes_read = 0;  // by all of them
  uint32_t mode = 0;        // of the last Open
  std::string log;          // "open", "close", "release" with its words, each followed by a blank

  int64_t Seek(int64_t offset, uint32_t origin) noexcept override {
    if (failing_seeks != 0) {
      --failing_seeks;
      return failed_seek;
    }
    const int64_t size = static_cast<int64_t>(bytes_.size());
    const int64_t base = origin == kSeekStart ? 0 : origin == kSeekCurrent ? position_ : size;
    if (base + offset < 0) return kSeekFailed;
    return position_ = base + offset;
  }
  int32_t Read(void* destination, uint32_t bytes, uint32_t* count) noexcept override {
    *count = bytes;
    const int64_t nth = reads++ - int64_t{fail_reads_from};
    if (fail_reads_from >= 0 && nth >= 0 && nth < failing_reads) return 0;
    const int64_t size = static_cast<int64_t>(bytes_.size());
    const int64_t left = position_ < size ? size - position_ : 0;
    *count = left < bytes ? static_cast<uint32_t>(left) : bytes;
    if (*count > 0) memcpy(destination, bytes_.data() + position_, *count);
    position_ += *count;
    bytes_read += *count;
    return 1;
  }
  int32_t Close() noexcept override {
    log += "close ";
    return close_result;
  }
  int32_t Open(const wchar_t*, uint32_t open_mode) noexcept override {
    log += "open ";
    mode = open_mode;
    position_ = 0;
    return !fail_open;
  }
  int32_t Release(HostWord a, HostWord b) noexcept override {
    log += "release" + std::to_string(a) + "," + std::to_string(b) + " ";
    return !refuse_release;
  }

 private:
  std::vector<char> bytes_;
  int64_t position_ = 0;
};

}  // namespace kelvo::test
