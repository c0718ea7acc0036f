#pragma once

#include "bookmarks/bookmarks_feature.h"

namespace kelvo {

// The bookmarks window on the screen.
class BookmarksShell final : public BookmarksWindow {
 public:
  bool Run(WindowHandle parent, BookmarkStore& store, BookmarkOrder& order) noexcept override;
};

}  // namespace kelvo
