// ID3v1 tags of MPEG audio files, the last 128 bytes; docs/formats/id3v1.md.
#pragma once

#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

inline constexpr size_t kId3v1Bytes = 128;
using Id3v1Block = uint8_t[kId3v1Bytes];

// The text fields, 8-bit in the system's code page and filled up with blanks or NULs.
struct Id3v1Field {
  size_t at;
  size_t bytes;
};
inline constexpr char kId3v1Mark[] = "TAG";  // at 0, without a NUL
inline constexpr Id3v1Field kId3v1Title = {3, 30};
inline constexpr Id3v1Field kId3v1Artist = {33, 30};
inline constexpr Id3v1Field kId3v1Album = {63, 30};
inline constexpr Id3v1Field kId3v1Year = {93, 4};
inline constexpr Id3v1Field kId3v1Comment = {97, 30};
inline constexpr Id3v1Field kId3v1ShortComment = {97, 28};  // before a track
inline constexpr size_t kId3v1TrackMarkAt = 125;            // 0: the next byte is a track
inline constexpr size_t kId3v1TrackAt = 126;
inline constexpr size_t kId3v1GenreAt = 127;

// The genres by their number: the first 80 of the format and the extensions that became common.
// Empty text for numbers without a name.
inline constexpr unsigned kGenreCount = 148;
const char* GenreName(unsigned number) noexcept;

// The tag as it stands in the file; false when there is none that can be read.
[[nodiscard]] bool FindId3v1(FileSystem& files, const wchar_t* path, Id3v1Block& tag) noexcept;

// Reads the tag of the entry's file. False when there is none that can be read: the entry is then
// unchanged; or when memory is out: the entry then has no tag block.
bool ReadId3v1(FileSystem& files, MediaEntry* entry) noexcept;
bool ReadId3v1(ByteSource& source, MediaEntry* entry) noexcept;

}  // namespace kelvo
