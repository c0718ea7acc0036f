// What the commands of the Curr. Playlist page do to its list of entries.
#pragma once

#include "base/memory/array.h"
#include "catalog/media/entry_list.h"
#include "kelvo/catalog.h"

namespace kelvo {

// Which items of the page's list are selected; one item an entry.
struct ListSelection {
  Array<bool> selected;
  size_t focused = 0;  // the number of items when none is
};

enum class Direction { kUp, kDown };

// Nothing is selected afterwards; the item that takes a removed one's place takes its focus, too.
void RemoveSelected(EntryList& entries, ListSelection& selection) noexcept;
// Moves every selected item by one position. Nothing moves when the first item in the direction of
// the move is selected. Where the foremost one is then; the number of items when none has moved.
size_t MoveSelected(EntryList& entries, ListSelection& selection, Direction direction) noexcept;

// The columns, left to right.
enum class PlaylistColumn : int { kTitle = 0, kArtist = 1, kAlbum = 2, kGenre = 3 };
inline constexpr int kPlaylistColumns = 4;

// What a column shows of an entry; at most 255 characters.
inline constexpr size_t kColumnCapacity = 256;
void ColumnText(const MediaEntry& entry, PlaylistColumn column,
                wchar_t (&text)[kColumnCapacity]) noexcept;

struct SortState {
  int column = -1;  // none yet
  int direction = 1;
  // A tap on a column's header: sorts by it, or the other way round when it was the sort column.
  void Tap(int tapped) noexcept {
    direction = tapped == column ? -direction : 1;
    column = tapped;
  }
};

// Negative, 0, positive, without regard to case and times the direction.
int CompareEntries(const MediaEntry& a, const MediaEntry& b, const SortState& sort) noexcept;

// Puts the entries into the order given: order[i] is the old position of the new i-th entry. Each
// position occurs once in it; it is used up.
void Reorder(EntryList& entries, Array<size_t>& order) noexcept;

// Whether there is something to play, enqueue or save.
bool AnyChecked(const EntryList& entries) noexcept;

struct HostCallback {
  CatalogCallback function = nullptr;
  HostWord cookie = 0;
  bool is_set() const noexcept { return function && cookie != 0; }
};

// Tells the host the path of every flagged entry, in order, and the end; for playing, to clear its
// list first. Nothing without a callback or without a cookie.
enum class HandOver { kPlay, kEnqueue };
void HandOverEntries(const HostCallback& host, HandOver how, const EntryList& entries) noexcept;

}  // namespace kelvo
