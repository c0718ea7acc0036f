// The decoder's input callbacks on top of the host's MediaReader.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "kelvo/media_reader.h"

namespace kelvo {

// What the callbacks get as their source.
struct ReaderSource {
  MediaReader* reader;
  uint32_t empty_reads;  // in a row; cleared before each call of the decoder
};

size_t ReadFromReader(void* destination, size_t size, size_t count, void* source) noexcept;
// 0, or 1 when the reader failed. Not -1, which would make the decoder take the file for one that
// cannot be seeked in.
int SeekInReader(void* source, int64_t offset, int origin) noexcept;
int CloseReader(void* source) noexcept;
long TellReader(void* source) noexcept;

}  // namespace kelvo
