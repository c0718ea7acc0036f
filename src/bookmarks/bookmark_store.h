#pragma once

#include "base/files/file_system.h"
#include "base/text/wide.h"
#include "bookmarks/bookmark_list.h"
#include "kelvo/types.h"

namespace kelvo {

// Where the host player is installed, the folder that holds the bookmarks.
class InstallFolder {
 public:
  // Writes the folder, without backslash at its end; empty when the host registered none. Asked at
  // each load and save, since the user can move the installation while the library is loaded.
  virtual void Read(wchar_t (&folder)[kTextCapacity]) noexcept = 0;

 protected:
  ~InstallFolder() = default;
};

// Columns as the window numbers them.
enum class BookmarkColumn : int32_t { kState = 0, kTime = 1, kTitle = 2 };

constexpr size_t kPositionTextCapacity = 24;

// What hosts find in the feature's object, in this order, behind its table of operations.
struct BookmarksState {
  WindowHandle window = nullptr;  // these three while the window is open
  WindowHandle list_view = nullptr;
  WindowHandle menu_bar = nullptr;
  BookmarkList list;
  wchar_t position_text[kPositionTextCapacity] = {};  // what the list view is drawing
  // How the window is sorted; a reopened one is sorted as it was left.
  BookmarkColumn sort_column = BookmarkColumn::kState;
  int32_t sort_direction = 1;  // -1 descending
};

// The list of bookmarks, its file and its order. Every change saves the whole list; when the file
// cannot be written the change stays in memory, and the file is as before. A change for which
// memory is out does not happen at all.
//
// Texts handed in are copied and cut to kTextCapacity - 1 characters; null counts as empty. One
// thread, the user interface's.
class BookmarkStore {
 public:
  // Both are borrowed and must outlive the store.
  BookmarkStore(FileSystem& files, InstallFolder& folder) noexcept
      : files_(files), folder_(folder) {}

  BookmarksState& state() noexcept { return state_; }
  int32_t size() const noexcept { return state_.list.size(); }
  bool Contains(int32_t index) const noexcept { return state_.list.Contains(index); }
  // `index` is one of the list.
  const Bookmark& At(int32_t index) const noexcept { return state_.list[index]; }
  // Whether the bookmark's file exists now.
  bool IsAlive(int32_t index) const noexcept { return files_.Exists(At(index).path.c_str()); }
  // The bookmark with these values, preferably the one at `index`; -1 when there is none.
  int32_t Find(int32_t index, const wchar_t* path, int32_t position_s,
               const wchar_t* description) const noexcept;

  // Replaces the list by the file's content, as far as it can be read; a missing file is an empty
  // list. A file that could not be read to its end is put aside by the next change, which replaces
  // it: "bookmarks.bak".
  void Load() noexcept;

  // Forgets the list; nothing is saved.
  void Clear() noexcept { state_.list.Clear(); }

  [[nodiscard]] bool Add(const wchar_t* path, int32_t position_s,
                         const wchar_t* description) noexcept;

  // An index outside the list does nothing. Texts that are not longer than the old ones need no
  // memory.
  void Update(int32_t index, const wchar_t* path, int32_t position_s,
              const wchar_t* description) noexcept;
  void Remove(int32_t index) noexcept;

  // Removes every bookmark whose file does not exist.
  void RemoveDead() noexcept;

  // The bookmark at index 0 is the last-played one when its description starts with
  // "(Last Played) ", in any case, no matter who wrote that.
  bool HasLastPlayed() const noexcept;
  // Puts it at index 0, in place of the old one or in front of the user's bookmarks.
  void SetLastPlayed(const wchar_t* path, int32_t position_s, const wchar_t* title) noexcept;

  // A click on a column's header: sorts by it, or turns the direction when it does already.
  void SortBy(BookmarkColumn column) noexcept;
  // Negative when bookmark `a` stands before `b`. Both indices are of the list. Sorting by state
  // asks the file system about both files.
  int Compare(int32_t a, int32_t b) const noexcept;

 private:
  void Save() noexcept;

  BookmarksState state_;
  FileSystem& files_;
  InstallFolder& folder_;
  bool unread_ = false;  // the file holds more than the list: saving puts it aside
};

// Positions as the bookmarks window and its edit dialog show them (bookmark_position.cpp).

// The list's form of a position: "1:30", "62:05".
void FormatListPosition(int32_t position_s, wchar_t (&text)[kPositionTextCapacity]) noexcept;

// The edit dialog's form, in two fields: "001" and "30".
void FormatEditPosition(int32_t position_s, wchar_t (&minutes)[kPositionTextCapacity],
                        wchar_t (&seconds)[kPositionTextCapacity]) noexcept;

// The position of the edit dialog's two fields. A field without digits counts as 0, any number of
// seconds is accepted; a position beyond 32 bits becomes the largest.
int32_t ParseEditPosition(const wchar_t* minutes, const wchar_t* seconds) noexcept;

}  // namespace kelvo
