#include "input/vorbis/reader_bridge.h"

#include <errno.h>

namespace kelvo {
namespace {

// Searching backwards for a page the decoder reads the same range again and again until it finds
// one. It never finds one when the reader's seeks fail or the file has shrunk: after this many
// empty reads in one call the end is reported as an error, which ends the search.
constexpr uint32_t kMostEmptyReads = 64;

MediaReader* ReaderOf(void* source) noexcept {
  return source ? static_cast<ReaderSource*>(source)->reader : nullptr;
}

}  // namespace

size_t ReadFromReader(void* destination, size_t size, size_t count, void* source) noexcept {
  MediaReader* reader = ReaderOf(source);
  if (size == 0 || count == 0 || !reader) return 0;
  uint32_t bytes_read = 0;
  if (!reader->Read(destination, static_cast<uint32_t>(size * count), &bytes_read)) bytes_read = 0;
  if (bytes_read > size * count) bytes_read = 0;  // a reader that overstates would overrun us
  uint32_t& empty_reads = static_cast<ReaderSource*>(source)->empty_reads;
  empty_reads = bytes_read == 0 ? empty_reads + 1 : 0;
  if (empty_reads > kMostEmptyReads) errno = EIO;
  return bytes_read / size;
}

int SeekInReader(void* source, int64_t offset, int origin) noexcept {
  MediaReader* reader = ReaderOf(source);
  if (!reader) return 0;
  return reader->Seek(offset, static_cast<uint32_t>(origin)) == kSeekFailed ? 1 : 0;
}

int CloseReader(void* source) noexcept {
  MediaReader* reader = ReaderOf(source);
  return reader ? reader->Close() : 0;
}

long TellReader(void* source) noexcept {
  MediaReader* reader = ReaderOf(source);
  return reader ? static_cast<long>(static_cast<uint32_t>(reader->Seek(0, kSeekCurrent))) : 0;
}

}  // namespace kelvo
