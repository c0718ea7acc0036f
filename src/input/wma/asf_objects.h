// The objects of an ASF header that are read, and the cursor that reads them.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/bytes/little_endian.h"
#include "input/wma/asf_header.h"

namespace kelvo {

// Reads a source from front to back. The first read or skip that fails makes all later ones fail
// and give zeros, so that a caller may look at ok() once, after a group of fields.
class AsfCursor {
 public:
  explicit AsfCursor(ByteSource& source) noexcept : source_(source), size_(source.SizeBytes()) {}

  bool ok() const noexcept { return ok_; }
  uint64_t left() const noexcept { return size_ - position_; }

  bool Read(void* dst, size_t bytes) noexcept {
    if (!ok_ || bytes > left() || source_.ReadAt(position_, dst, bytes) != ReadResult::kOk) {
      return ok_ = false;
    }
    position_ += bytes;
    return true;
  }

  bool Skip(uint64_t bytes) noexcept {
    if (!ok_ || bytes > left()) return ok_ = false;
    position_ += bytes;
    return true;
  }

  uint16_t U16() noexcept {
    uint8_t bytes[2];
    return Read(bytes, sizeof(bytes)) ? LoadU16(bytes) : uint16_t{0};
  }

  uint32_t U32() noexcept {
    uint8_t bytes[4];
    return Read(bytes, sizeof(bytes)) ? LoadU32(bytes) : 0;
  }

  // A text field of `bytes` bytes: keeps what fits and goes on behind the whole field. Always
  // terminates; an odd last byte is dropped; empty when the field is not there completely.
  template <size_t kCapacity>
  bool Text(wchar_t (&dst)[kCapacity], uint32_t bytes) noexcept {
    constexpr uint32_t kRoom = (kCapacity - 1) * 2;
    const uint32_t kept = (bytes < kRoom ? bytes : kRoom) & ~1u;
    dst[0] = 0;
    if (bytes > left()) return ok_ = false;
    if (!Read(dst, kept) || !Skip(bytes - kept)) return false;
    for (uint32_t i = 0; i < kept / 2; ++i) {
      dst[i] = static_cast<wchar_t>(LoadU16(reinterpret_cast<const uint8_t*>(dst) + i * 2));
    }
    dst[kept / 2] = 0;
    return true;
  }

 private:
  ByteSource& source_;
  uint64_t size_;
  uint64_t position_ = 0;  // never behind size_
  bool ok_ = true;
};

// Long enough for the longest text that anything is looked up in. 8 KB: one of them per reader.
struct AsfScratch {
  wchar_t text[4097];
};

// Each starts behind the object's 24-byte header and leaves the cursor behind what it read, or
// failed when the object breaks off; values that were complete by then are kept.
void ReadContentDescription(AsfCursor& cursor, AsfInfo* out) noexcept;
void ReadExtendedContent(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept;
void ReadCodecList(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept;
void ReadStreamBitrates(AsfCursor& cursor, AsfInfo* out) noexcept;
void ReadFileProperties(AsfCursor& cursor, AsfInfo* out) noexcept;

}  // namespace kelvo
