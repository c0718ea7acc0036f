#pragma once

#include <stdint.h>

#include "base/memory/array.h"
#include "base/memory/heap_text.h"

namespace kelvo {

// A place in a media file. Both texts hold at most kTextCapacity - 1 characters.
struct Bookmark {
  HeapText path;
  HeapText description;
  int32_t position_s = 0;  // seconds from the start of the file
};

using BookmarkList = Array<Bookmark>;

// Makes room for one more. Users keep few bookmarks and the device's heap is small, so the list
// grows by a fixed step.
[[nodiscard]] inline bool GrowBookmarks(BookmarkList* list) noexcept {
  constexpr size_t kStep = 50;
  return list->size() < list->capacity() || list->Reserve(list->capacity() + kStep);
}

}  // namespace kelvo
