#pragma once

#include "bookmarks/bookmark_store.h"
#include "kelvo/bookmarks.h"

namespace kelvo {

// The window that shows the list; the shell has the real one.
class BookmarksWindow {
 public:
  // Runs modally above `parent`: loads the store, shows and edits it. False, at once, when a dialog
  // of the library is open already.
  virtual bool Run(WindowHandle parent, BookmarkStore& store) noexcept = 0;

 protected:
  ~BookmarksWindow() = default;
};

// On the screen, and in the registry where the host's installer put it: src/bookmarks/windows.
class BookmarksShell final : public BookmarksWindow {
 public:
  bool Run(WindowHandle parent, BookmarkStore& store) noexcept override;
};
class RegisteredInstallFolder final : public InstallFolder {
 public:
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override;
};

// Feature 8. One object, static in the library; user-interface thread only.
class BookmarksFeature final : public Bookmarks {
 public:
  // All are borrowed and must outlive the object; a null window never opens.
  BookmarksFeature(FileSystem& files, InstallFolder& folder, BookmarksWindow* window) noexcept
      : store_(files, folder), window_(window) {}

  int32_t AddBookmark(const wchar_t* path, int32_t position_s,
                      const wchar_t* description) noexcept override;
  void UpdateBookmark(int32_t index, const wchar_t* path, int32_t position_s,
                      const wchar_t* description) noexcept override;
  int32_t GetBookmark(int32_t index, wchar_t* path, wchar_t* description,
                      int32_t* position_s) noexcept override;
  int32_t LoadBookmarks() noexcept override;
  int32_t ShowBookmarks(WindowHandle parent) noexcept override;
  void Destroy(uint32_t flags) noexcept override;
  void SetLastPlayed(const wchar_t* path, int32_t position_s,
                     const wchar_t* title) noexcept override;
  int32_t TakeLastPlayed(wchar_t* path, int32_t* position_s) noexcept override;

 private:
  BookmarkStore store_;  // first: begins with what hosts find behind the table of operations
  BookmarksWindow* window_;
};

}  // namespace kelvo
