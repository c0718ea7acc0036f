#include "catalog/media/id3v1.h"

#include <string.h>

namespace kelvo {
namespace {

bool FindTag(ByteSource& source, Id3v1Block& tag) noexcept {
  const uint64_t size = source.SizeBytes();
  return size >= kId3v1Bytes &&
         source.ReadAt(size - kId3v1Bytes, tag, kId3v1Bytes) == ReadResult::kOk &&
         memcmp(tag, kId3v1Mark, sizeof(kId3v1Mark) - 1) == 0;
}

void CopyTrimmed(const Id3v1Block& tag, const Id3v1Field& from, TagField& to) noexcept {
  memcpy(to, tag + from.at, from.bytes);
  TrimField(to, from.bytes);
}

}  // namespace

bool FindId3v1(FileSystem& files, const wchar_t* path, Id3v1Block& tag) noexcept {
  OpenFile<FileReader> file = files.OpenRead(path, Share::kRead);
  return file && FindTag(*file, tag);
}

bool ReadId3v1(ByteSource& source, MediaEntry* entry) noexcept {
  Id3v1Block tag;
  if (!FindTag(source, tag)) return false;
  // The old block goes first: a stale tag is worse than none.
  entry->tag.Reset();
  entry->tag.Reset(HeapNew<TagBlock>());
  if (!entry->tag) return false;
  CopyTrimmed(tag, kId3v1Album, entry->tag->album);
  CopyTrimmed(tag, kId3v1Artist, entry->tag->artist);
  CopyTrimmed(tag, kId3v1Title, entry->tag->title);
  const char* genre = GenreName(tag[kId3v1GenreAt]);
  memcpy(entry->tag->genre, genre, strlen(genre));
  return true;
}

bool ReadId3v1(FileSystem& files, MediaEntry* entry) noexcept {
  OpenFile<FileReader> file = files.OpenRead(entry->path.c_str(), Share::kRead);
  return file && ReadId3v1(*file, entry);
}

}  // namespace kelvo
