// ID3v1 tags of MPEG audio files; docs/formats/id3v1.md.
#pragma once

#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

inline constexpr size_t kId3v1Bytes = 128;

// Fills the block from the last 128 bytes of a file; false, with the block untouched, when they
// are no tag.
[[nodiscard]] bool ParseId3v1(const uint8_t (&bytes)[kId3v1Bytes], TagBlock* block) noexcept;

// Reads the tag of the entry's file. False when there is none that can be read: the entry is then
// unchanged; or when memory is out: the entry then has no tag block.
bool ReadId3v1(FileSystem& files, MediaEntry* entry) noexcept;
bool ReadId3v1(ByteSource& source, MediaEntry* entry) noexcept;

}  // namespace kelvo
