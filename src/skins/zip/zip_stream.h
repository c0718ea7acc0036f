#pragma once

#include <stddef.h>
#include <stdint.h>

#include <unzip.h>

#include "base/bytes/byte_source.h"

namespace kelvo {

// Lets minizip read from a ByteSource. It reads directories a byte at a time and looks for their
// end backwards, so short reads come out of an aligned window of the file.
//
// minizip takes the last bytes that look like the end of a directory for it, also when they stand
// in the archive's comment. The stream therefore finds the end itself and shows the file without
// its comment.
class ZipStream {
 public:
  // The source is borrowed and must outlive the stream.
  explicit ZipStream(ByteSource& source) noexcept : source_(source), end_(source.SizeBytes()) {}
  ZipStream(const ZipStream&) = delete;
  ZipStream& operator=(const ZipStream&) = delete;

  // Null when it is no zip archive. To be closed with unzClose, before the stream's end.
  unzFile Open() noexcept;

 private:
  static constexpr size_t kWindowBytes = 4096;

  // Cuts the comment off. False when there is no directory.
  [[nodiscard]] bool FindEnd() noexcept;
  uLong Read(void* dst, uLong bytes) noexcept;
  // Bytes read; 0 at the end, and for ever after a failed read.
  size_t ReadSource(uint64_t offset, void* dst, size_t bytes) noexcept;
  long Seek(ZPOS64_T offset, int origin) noexcept;

  static ZipStream& Self(voidpf stream) noexcept { return *static_cast<ZipStream*>(stream); }
  static voidpf OpenCall(voidpf opaque, const void* name, int mode);
  static uLong ReadCall(voidpf opaque, voidpf stream, void* dst, uLong bytes);
  static ZPOS64_T TellCall(voidpf opaque, voidpf stream);
  static long SeekCall(voidpf opaque, voidpf stream, ZPOS64_T offset, int origin);
  static int CloseCall(voidpf opaque, voidpf stream);
  static int ErrorCall(voidpf opaque, voidpf stream);

  ByteSource& source_;
  uint64_t end_;
  bool failed_ = false;
  bool last_was_short_ = false;
  uint64_t position_ = 0;
  uint64_t window_start_ = 0;
  size_t window_bytes_ = 0;
  uint8_t window_[kWindowBytes];
};

}  // namespace kelvo
