// What the bookmarks window shows and does, without the window.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "bookmarks/bookmark_store.h"

namespace kelvo {

// Columns as the window numbers them.
enum class BookmarkColumn { kState = 0, kTime = 1, kTitle = 2 };

// How the list is sorted. Outlives the window: a reopened one is sorted as it was left.
class BookmarkOrder {
 public:
  BookmarkColumn column() const noexcept { return column_; }
  int direction() const noexcept { return direction_; }  // 1 ascending, -1 descending

  // A click on a column's header: sorts by it, or turns the direction when it does already.
  void Click(BookmarkColumn column) noexcept;

  // Negative when bookmark `a` stands before `b`. Both indices are of the store's list. Sorting by
  // state asks the file system about both files.
  int Compare(const BookmarkStore& store, int32_t a, int32_t b) const noexcept;

 private:
  BookmarkColumn column_ = BookmarkColumn::kState;
  int direction_ = 1;
};

constexpr size_t kPositionTextCapacity = 24;

// The list's form of a position: "1:30", "62:05".
void FormatListPosition(int32_t position_s, wchar_t (&text)[kPositionTextCapacity]) noexcept;

// The edit dialog's form, in two fields: "001" and "30".
void FormatEditPosition(int32_t position_s, wchar_t (&minutes)[kPositionTextCapacity],
                        wchar_t (&seconds)[kPositionTextCapacity]) noexcept;

// The position of the edit dialog's two fields. A field without digits counts as 0, any number of
// seconds is accepted; a position beyond 32 bits becomes the largest.
int32_t ParseEditPosition(const wchar_t* minutes, const wchar_t* seconds) noexcept;

// Where the selection mark goes when the item under it was removed.
constexpr int MarkAfterRemoval(int removed_item) noexcept {
  return removed_item > 0 ? removed_item - 1 : 0;
}

}  // namespace kelvo
