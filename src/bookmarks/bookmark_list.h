// The list of bookmarks, and its text in "bookmarks.dat" (docs/formats/bookmarks.md): UTF-16LE,
// three lines a bookmark.
#pragma once

#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/files/file_system.h"
#include "base/memory/heap_text.h"

namespace kelvo {

// A place in a media file. Both texts hold at most kTextCapacity - 1 characters.
struct Bookmark {
  HeapText path;
  HeapText description;
  int32_t position_s = 0;  // seconds from the start of the file
};

// Hosts find the three fields in this order. Slots behind the last bookmark are zero.
class BookmarkList {
 public:
  BookmarkList() noexcept = default;
  BookmarkList(BookmarkList&& other) noexcept;
  ~BookmarkList() { Clear(); }

  int32_t size() const noexcept { return count_; }
  bool Contains(int32_t index) const noexcept { return index >= 0 && index < count_; }
  Bookmark& operator[](int32_t index) noexcept { return items_[index]; }
  const Bookmark& operator[](int32_t index) const noexcept { return items_[index]; }
  const Bookmark* begin() const noexcept { return items_; }
  const Bookmark* end() const noexcept { return items_ + count_; }

  // Makes room for one more. Users keep few bookmarks and the device's heap is small, so the list
  // grows by a fixed step.
  [[nodiscard]] bool Grow() noexcept;
  // `at` is 0 to size(). False, with the list as it was, when memory is out.
  [[nodiscard]] bool Insert(int32_t at, Bookmark bookmark) noexcept;
  void RemoveAt(int32_t at) noexcept;
  // Also frees the storage.
  void Clear() noexcept;

 private:
  Bookmark* items_ = nullptr;
  int32_t count_ = 0;
  int32_t capacity_ = 0;
};

// Appends the bookmarks of the file to the list. Stops in front of the first one that cannot be
// read completely (end of the file, read error, no memory); those before it stay. False when it was
// an error or memory that ended the list.
bool ReadBookmarks(ByteSource& source, BookmarkList* list) noexcept;

// Writes the bookmarks that have a path: an empty one would end the list for the reader. Line
// breaks within a text become blanks. False when a write failed; the file then ends somewhere
// inside.
[[nodiscard]] bool WriteBookmarks(FileWriter& file, const BookmarkList& list) noexcept;

}  // namespace kelvo
