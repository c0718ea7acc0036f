#include "skins/zip/zip_stream.h"

#include <string.h>

#include "base/bytes/little_endian.h"

namespace kelvo {

unzFile ZipStream::Open() noexcept {
  if (!FindEnd()) return nullptr;
  zlib_filefunc64_def calls;
  calls.zopen64_file = OpenCall;
  calls.zread_file = ReadCall;
  calls.zwrite_file = nullptr;  // reading never asks for it
  calls.ztell64_file = TellCall;
  calls.zseek64_file = SeekCall;
  calls.zclose_file = CloseCall;
  calls.zerror_file = ErrorCall;
  calls.opaque = this;
  return unzOpen2_64("", &calls);
}

bool ZipStream::FindEnd() noexcept {
  constexpr uint32_t kSignature = 0x06054B50;
  constexpr uint64_t kRecordBytes = 22;  // its last two are the length of the comment behind it
  constexpr uint64_t kLongestComment = 0xFFFF;
  const uint64_t size = end_;
  uint64_t without_right_comment = 0;
  for (uint64_t comment = 0; comment <= kLongestComment && kRecordBytes + comment <= size;
       ++comment) {
    uint8_t record[kRecordBytes];
    position_ = size - comment - kRecordBytes;
    if (Read(record, 1) != 1) return false;
    if (record[0] != (kSignature & 0xFF)) continue;
    if (Read(record + 1, kRecordBytes - 1) != kRecordBytes - 1) return false;
    if (LoadU32(record) != kSignature) continue;
    end_ = size - comment;
    if (LoadU16(record + kRecordBytes - 2) == comment) return true;
    if (without_right_comment == 0) without_right_comment = end_;
  }
  end_ = without_right_comment;
  return end_ != 0;
}

uLong ZipStream::Read(void* dst, uLong bytes) noexcept {
  uint8_t* out = static_cast<uint8_t*>(dst);
  uLong done = 0;
  if (bytes >= kWindowBytes) {
    done = static_cast<uLong>(ReadSource(position_, out, bytes));
    position_ += done;
  }
  while (done < bytes && bytes < kWindowBytes) {
    if (position_ < window_start_ || position_ - window_start_ >= window_bytes_) {
      window_start_ = position_ - position_ % kWindowBytes;
      window_bytes_ = ReadSource(window_start_, window_, kWindowBytes);
      if (window_bytes_ <= position_ - window_start_) break;
    }
    const size_t at = static_cast<size_t>(position_ - window_start_);
    const size_t left = window_bytes_ - at;
    const size_t part = bytes - done < left ? bytes - done : left;
    memcpy(out + done, window_ + at, part);
    done += static_cast<uLong>(part);
    position_ += part;
  }
  last_was_short_ = done < bytes;
  return done;
}

size_t ZipStream::ReadSource(uint64_t offset, void* dst, size_t bytes) noexcept {
  if (offset >= end_) return 0;
  if (bytes > end_ - offset) bytes = static_cast<size_t>(end_ - offset);
  size_t got = 0;
  if (!failed_) failed_ = source_.ReadSome(offset, dst, bytes, &got) != ReadResult::kOk;
  return got;
}

// Positions behind the end are allowed: reading there gives nothing. An archive's numbers can point
// anywhere, so the sum may wrap around; that is then some other position.
long ZipStream::Seek(ZPOS64_T offset, int origin) noexcept {
  switch (origin) {
    case ZLIB_FILEFUNC_SEEK_SET:
      position_ = offset;
      return 0;
    case ZLIB_FILEFUNC_SEEK_CUR:
      position_ += offset;
      return 0;
    case ZLIB_FILEFUNC_SEEK_END:
      position_ = end_ + offset;
      return 0;
    default:
      return -1;
  }
}

voidpf ZipStream::OpenCall(voidpf opaque, const void*, int) {
  return opaque;
}

uLong ZipStream::ReadCall(voidpf, voidpf stream, void* dst, uLong bytes) {
  return Self(stream).Read(dst, bytes);
}

ZPOS64_T ZipStream::TellCall(voidpf, voidpf stream) {
  return Self(stream).position_;
}

long ZipStream::SeekCall(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
  return Self(stream).Seek(offset, origin);
}

int ZipStream::CloseCall(voidpf, voidpf) {
  return 0;
}

// minizip takes the end of the file for zeros unless it hears of an error.
int ZipStream::ErrorCall(voidpf, voidpf stream) {
  return Self(stream).last_was_short_;
}

}  // namespace kelvo
