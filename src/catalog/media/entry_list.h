// Media files as the catalog and the playlists hold them. Used by one thread, the interface's.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "base/text/wide.h"

namespace kelvo {

// What a file is, decided by the three letters behind the point. Other parts of the library use the
// numbers as they stand.
enum class MediaKind : int32_t {
  kNone = -1,
  kM3u = 1,
  kMpeg = 2,
  kOgg = 3,
  kPls = 4,
  kWma = 5,
  kAsx = 6,
};

MediaKind MediaKindOf(const wchar_t* path) noexcept;

// What the catalog keeps of a file's tag: 8-bit text in the system's code page, at most 30 bytes
// and a NUL each. The rest of a field is zero.
inline constexpr size_t kTagFieldBytes = 31;
using TagField = char[kTagFieldBytes];

struct TagBlock {
  TagField title = {};
  TagField artist = {};
  TagField album = {};
  TagField genre = {};
};
static_assert(offsetof(TagBlock, title) == 0 && offsetof(TagBlock, artist) == 31 &&
              offsetof(TagBlock, album) == 62 && offsetof(TagBlock, genre) == 93 &&
              sizeof(TagBlock) == 124);

// Turns the blanks and NULs at the end of `length` bytes into NULs.
void TrimField(char* bytes, size_t length) noexcept;

// Converts the first 30 characters, as far as they give at most 29 bytes. (Tags read from files
// may fill all 30.)
void CopyToField(const wchar_t* text, TagField& field) noexcept;

struct MediaEntry {
  HeapText path;          // full path
  HeapPtr<TagBlock> tag;  // null: nothing was read
  // The Media Catalog's list: the file's tree item, 0 without one. Playlists: the check flag.
  uintptr_t item = 0;
};
static_assert(offsetof(MediaEntry, path) == 0 && offsetof(MediaEntry, tag) == sizeof(void*) &&
              offsetof(MediaEntry, item) == 2 * sizeof(void*) &&
              sizeof(MediaEntry) == 3 * sizeof(void*));

// The check flag: the item word of an entry when it is added to a playlist.
inline constexpr uintptr_t kEntryFlag = 1;

// Grows by 100 entries at a time; an entry for which there is no memory is not added.
class EntryList {
 public:
  static constexpr size_t kGrowth = 100;

  // The new last entry with a copy of `path`, valid until the list changes; null when memory is
  // out, the list is then as before.
  MediaEntry* Add(const wchar_t* path) noexcept;

  // Makes room at once for so many more, as adding them would step by step. Without memory for that
  // they are still added as far as they fit.
  void GrowFor(size_t more) noexcept;

  size_t size() const noexcept { return entries_.size(); }
  size_t capacity() const noexcept { return entries_.capacity(); }
  bool empty() const noexcept { return entries_.empty(); }
  MediaEntry& operator[](size_t i) noexcept { return entries_[i]; }
  const MediaEntry& operator[](size_t i) const noexcept { return entries_[i]; }
  MediaEntry& back() noexcept { return entries_.back(); }
  MediaEntry* begin() noexcept { return entries_.begin(); }
  MediaEntry* end() noexcept { return entries_.end(); }
  const MediaEntry* begin() const noexcept { return entries_.begin(); }
  const MediaEntry* end() const noexcept { return entries_.end(); }
  void RemoveAt(size_t at) noexcept { entries_.RemoveAt(at); }
  void Clear() noexcept { entries_.Clear(); }
  void Swap(EntryList& other) noexcept { entries_.Swap(other.entries_); }

 private:
  Array<MediaEntry> entries_;
};

// The texts that stand for an entry in trees and lists, in the system's code page: the title, or
// without one the file's name with its extension; of the others "Unknown" when the entry has none.
void TitleText(const MediaEntry& entry, char (&text)[kTextCapacity]) noexcept;
void ArtistText(const MediaEntry& entry, TagField& text) noexcept;
void AlbumText(const MediaEntry& entry, TagField& text) noexcept;
void GenreText(const MediaEntry& entry, TagField& text) noexcept;

}  // namespace kelvo
