// Feature 8: bookmarks, positions inside media files, kept in "bookmarks.dat" in the host's
// installation folder (docs/formats/bookmarks.md).
//
// Order of calls: LoadBookmarks once, before anything that changes the list: every change writes
// the whole list, so changing a list that was never loaded replaces the file. Indices are positions
// in the list, from 0; removing a bookmark (also in the bookmarks window) moves the later ones up.
//
// Thread: all operations on the host's user-interface thread. Texts handed in are copied, cut to
// kMaxText - 1 characters; null counts as empty. No operation but ShowBookmarks shows anything, and
// a file that cannot be written is no failure: the list then lives in memory only, and the file is
// as it was.
//
// Generated from tools/contract/bookmarks.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

// One bookmark of the list, as the object holds it.
struct BookmarkFields {
  wchar_t* path;
  wchar_t* description;
  int32_t position_s;
};
static_assert(sizeof(void*) != 4 || sizeof(BookmarkFields) == 12);

// The object's words behind the table of operations, by their places on 32 bits. What follows is
// the library's own; so is changing any of this.
//     4  WindowHandle window: this, the list and the menu bar: null while the window is closed
//     8  WindowHandle list
//    12  WindowHandle menu_bar
//    16  BookmarkFields* bookmarks
//    20  int32_t count
//    24  int32_t capacity: 0, or a multiple of 50
//    28  wchar_t position_text[24]: in which the window formats positions
//    76  int32_t sort_column: 0 state, 1 time, 2 title
//    80  int32_t sort_direction: 1 ascending, -1
class Bookmarks {
 public:
  // Slot 0. Appends a bookmark and saves. `position_s`: seconds from the start of the file. One
  // with an empty path is in the list, but not in the file. Non-zero once the bookmark is in the
  // list; 0 without memory, the list is then as before.
  virtual int32_t AddBookmark(const wchar_t* path, int32_t position_s,
                              const wchar_t* description) noexcept = 0;

  // Slot 1. Replaces the three values of a bookmark and saves. Does nothing for an index outside
  // the list, or without memory for a text that is longer than the old one.
  virtual void UpdateBookmark(int32_t index, const wchar_t* path, int32_t position_s,
                              const wchar_t* description) noexcept = 0;

  // Slot 2. Copies a bookmark out; each output may be null, the texts are buffers of kMaxText
  // characters. 1 when the bookmark's file exists, 0 when it does not (the outputs are written all
  // the same). An index outside the list gives 0 and writes nothing.
  virtual int32_t GetBookmark(int32_t index, wchar_t* path, wchar_t* description,
                              int32_t* position_s) noexcept = 0;

  // Slot 3. Replaces the list by the file's and returns its length. A missing file is an empty
  // list; a file that cannot be read to its end gives the bookmarks before the fault.
  virtual int32_t LoadBookmarks() noexcept = 0;

  // Slot 4. Loads the list and shows it in a modal window above `parent` (which is the window that
  // receives kMessagePlayBookmark). 0 after it was closed; 1 at once when it cannot open because a
  // dialog of the library is open already.
  virtual int32_t ShowBookmarks(WindowHandle parent) noexcept = 0;

  // Slot 5. Frees the list, without saving; harmless when repeated. Bit 0 of `flags` asks to give
  // the object's own memory back too. For the library's unloading; never to be called by the host
  // on what GetFeature returned.
  virtual void Destroy(uint32_t flags) noexcept = 0;

  // Slot 6. Stores where playback stopped as the bookmark "(Last Played) " + title at index 0 and
  // saves. There is one such bookmark: the next call replaces it. A user's bookmark at index 0 is
  // kept and moves to index 1. Does nothing without memory.
  virtual void SetLastPlayed(const wchar_t* path, int32_t position_s,
                             const wchar_t* title) noexcept = 0;

  // Slot 7. Takes the last-played bookmark out of the list and saves. 1 when there was one and its
  // file exists. 0 otherwise, and the list stays as it is; but the outputs have then been written
  // from the bookmark at index 0, if any: look at the result first. Outputs as in GetBookmark.
  virtual int32_t TakeLastPlayed(wchar_t* path, int32_t* position_s) noexcept = 0;

 protected:
  ~Bookmarks() = default;
};

}  // namespace kelvo
