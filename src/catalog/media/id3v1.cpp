#include "catalog/media/id3v1.h"

#include <string.h>

#include "catalog/media/genre_list.h"

namespace kelvo {
namespace {

constexpr size_t kTitleAt = 3;
constexpr size_t kArtistAt = 33;
constexpr size_t kAlbumAt = 63;
constexpr size_t kGenreAt = 127;
constexpr size_t kTextBytes = 30;

void CopyField(const uint8_t* bytes, TagField& field) noexcept {
  memcpy(field, bytes, kTextBytes);
  field[kTextBytes] = 0;
  TrimField(field, kTextBytes);
}

bool IsTag(const uint8_t (&bytes)[kId3v1Bytes]) noexcept {
  return memcmp(bytes, "TAG", 3) == 0;
}

}  // namespace

bool ParseId3v1(const uint8_t (&bytes)[kId3v1Bytes], TagBlock* block) noexcept {
  if (!IsTag(bytes)) return false;
  CopyField(bytes + kAlbumAt, block->album);
  CopyField(bytes + kArtistAt, block->artist);
  CopyField(bytes + kTitleAt, block->title);
  memset(block->genre, 0, sizeof(block->genre));
  const char* genre = GenreName(bytes[kGenreAt]);
  memcpy(block->genre, genre, strlen(genre));
  return true;
}

bool ReadId3v1(ByteSource& source, MediaEntry* entry) noexcept {
  const uint64_t size = source.SizeBytes();
  uint8_t bytes[kId3v1Bytes];
  if (size < kId3v1Bytes ||
      source.ReadAt(size - kId3v1Bytes, bytes, kId3v1Bytes) != ReadResult::kOk || !IsTag(bytes)) {
    return false;
  }
  // The old block goes first: a stale tag is worse than none.
  entry->tag.Reset();
  entry->tag.Reset(HeapNew<TagBlock>());
  return entry->tag && ParseId3v1(bytes, entry->tag.get());
}

bool ReadId3v1(FileSystem& files, MediaEntry* entry) noexcept {
  OpenFile<FileReader> file = files.OpenRead(entry->path.c_str(), Share::kRead);
  return file && ReadId3v1(*file, entry);
}

}  // namespace kelvo
