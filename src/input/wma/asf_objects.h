// The objects of an ASF header that are read, and the cursor that reads them.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/bytes/little_endian.h"
#include "input/wma/asf_header.h"

namespace kelvo {

// Texts in files are what they are in memory.
static_assert(sizeof(wchar_t) == 2 && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);

// Reads a source from front to back. The first read or skip that fails makes all later ones fail
// and give zeros, so that a caller may look at ok() once, after a group of fields.
class AsfCursor {
 public:
  explicit AsfCursor(ByteSource& source) noexcept : source_(source), size_(source.SizeBytes()) {}

  bool ok() const noexcept { return ok_; }
  uint64_t left() const noexcept { return size_ - position_; }

  bool Read(void* dst, size_t bytes) noexcept {
    ok_ = ok_ && bytes <= left() && source_.ReadAt(position_, dst, bytes) == ReadResult::kOk;
    if (ok_) position_ += bytes;
    return ok_;
  }

  bool Skip(uint64_t bytes) noexcept {
    ok_ = ok_ && bytes <= left();
    if (ok_) position_ += bytes;
    return ok_;
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
  void Text(wchar_t (&dst)[kCapacity], uint32_t bytes) noexcept {
    constexpr uint32_t kRoom = (kCapacity - 1) * 2;
    const uint32_t kept = (bytes < kRoom ? bytes : kRoom) & ~1u;
    const bool whole = Read(dst, kept) && Skip(bytes - kept);
    dst[whole ? kept / 2 : 0] = 0;
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
