/* Feature 8: bookmarks, positions inside media files, kept in "bookmarks.dat" in the host's
 * installation folder (docs/formats/bookmarks.md).
 *
 * Order of calls: LoadBookmarks once, before anything that changes the list: every change
 * writes the whole list, so changing a list that was never loaded replaces the file. Indices
 * are positions in the list, from 0; removing a bookmark (also in the bookmarks window) moves
 * the later ones up.
 *
 * Thread: all operations on the host's user-interface thread. Texts handed in are copied, cut
 * to KELVO_MAX_TEXT - 1 characters; null counts as empty. No operation but ShowBookmarks shows
 * anything, and a file that cannot be written is no failure: the list then lives in memory
 * only, and the file is as it was.
 *
 * Generated from tools/contract/bookmarks.txt. */
#ifndef KELVO_C_BOOKMARKS_H
#define KELVO_C_BOOKMARKS_H

#include "types.h"

/* One bookmark of the list, as the object holds it. */
typedef struct KelvoBookmarkFields {
  wchar_t* path;
  wchar_t* description;
  int32_t position_s;
} KelvoBookmarkFields;

typedef struct KelvoBookmarks KelvoBookmarks;
typedef struct KelvoBookmarksTable {
  /* Slot 0. Appends a bookmark and saves. `position_s`: seconds from the start of the file. One
   * with an empty path is in the list, but not in the file. Non-zero once the bookmark is in the
   * list; 0 without memory, the list is then as before. */
  int32_t(KELVO_METHOD* AddBookmark)(KELVO_SELF(KelvoBookmarks), const wchar_t* path,
                                     int32_t position_s, const wchar_t* description);

  /* Slot 1. Replaces the three values of a bookmark and saves. Does nothing for an index outside
   * the list, or without memory for a text that is longer than the old one. */
  void(KELVO_METHOD* UpdateBookmark)(KELVO_SELF(KelvoBookmarks), int32_t index, const wchar_t* path,
                                     int32_t position_s, const wchar_t* description);

  /* Slot 2. Copies a bookmark out; each output may be null, the texts are buffers of
   * KELVO_MAX_TEXT characters. 1 when the bookmark's file exists, 0 when it does not (the
   * outputs are written all the same). An index outside the list gives 0 and writes nothing. */
  int32_t(KELVO_METHOD* GetBookmark)(KELVO_SELF(KelvoBookmarks), int32_t index, wchar_t* path,
                                     wchar_t* description, int32_t* position_s);

  /* Slot 3. Replaces the list by the file's and returns its length. A missing file is an empty
   * list; a file that cannot be read to its end gives the bookmarks before the fault. */
  int32_t(KELVO_METHOD* LoadBookmarks)(KELVO_SELF(KelvoBookmarks));

  /* Slot 4. Loads the list and shows it in a modal window above `parent` (which is the window
   * that receives KELVO_MESSAGE_PLAY_BOOKMARK). 0 after it was closed; 1 at once when it cannot
   * open because a dialog of the library is open already. */
  int32_t(KELVO_METHOD* ShowBookmarks)(KELVO_SELF(KelvoBookmarks), KelvoWindowHandle parent);

  /* Slot 5. Frees the list, without saving; harmless when repeated. Bit 0 of `flags` asks to
   * give the object's own memory back too. For the library's unloading; never to be called by
   * the host on what GetFeature returned. */
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoBookmarks), uint32_t flags);

  /* Slot 6. Stores where playback stopped as the bookmark "(Last Played) " + title at index 0
   * and saves. There is one such bookmark: the next call replaces it. A user's bookmark at index
   * 0 is kept and moves to index 1. Does nothing without memory. */
  void(KELVO_METHOD* SetLastPlayed)(KELVO_SELF(KelvoBookmarks), const wchar_t* path,
                                    int32_t position_s, const wchar_t* title);

  /* Slot 7. Takes the last-played bookmark out of the list and saves. 1 when there was one and
   * its file exists. 0 otherwise, and the list stays as it is; but the outputs have then been
   * written from the bookmark at index 0, if any: look at the result first. Outputs as in
   * GetBookmark. */
  int32_t(KELVO_METHOD* TakeLastPlayed)(KELVO_SELF(KelvoBookmarks), wchar_t* path,
                                        int32_t* position_s);
} KelvoBookmarksTable;
struct KelvoBookmarks {
  const KelvoBookmarksTable* table;
  KelvoWindowHandle window; /* this, the list and the menu bar: null while the window is closed */
  KelvoWindowHandle list;
  KelvoWindowHandle menu_bar;
  KelvoBookmarkFields* bookmarks;
  int32_t count;
  int32_t capacity;          /* 0, or a multiple of 50 */
  wchar_t position_text[24]; /* in which the window formats positions */
  int32_t sort_column;       /* 0 state, 1 time, 2 title */
  int32_t sort_direction;    /* 1 ascending, -1 */
};

#endif
