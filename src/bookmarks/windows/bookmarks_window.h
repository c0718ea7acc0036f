#pragma once

#include "bookmarks/bookmarks_feature.h"

namespace kelvo {

// The bookmarks window on the screen.
class BookmarksShell final : public BookmarksWindow {
 public:
  bool Run(WindowHandle parent, BookmarkStore& store) noexcept override;
};

// The folder that the host's installer put into the registry.
class RegisteredInstallFolder final : public InstallFolder {
 public:
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override;
};

}  // namespace kelvo
