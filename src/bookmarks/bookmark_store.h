#pragma once

#include "base/files/file_system.h"
#include "bookmarks/bookmark.h"
#include "bookmarks/install_folder.h"

namespace kelvo {

// The list of bookmarks and its file. Every change saves the whole list; when the file cannot be
// written the change stays in memory. A change for which memory is out does not happen at all.
//
// Texts handed in are copied and cut to kTextCapacity - 1 characters; null counts as empty. One
// thread, the user interface's.
class BookmarkStore {
 public:
  // Both are borrowed and must outlive the store.
  BookmarkStore(FileSystem& files, InstallFolder& folder) noexcept
      : files_(files), folder_(folder) {}

  size_t size() const noexcept { return list_.size(); }
  bool Contains(int32_t index) const noexcept {
    return index >= 0 && static_cast<size_t>(index) < list_.size();
  }
  // `index` is one of the list.
  const Bookmark& At(int32_t index) const noexcept { return list_[static_cast<size_t>(index)]; }
  // Whether the bookmark's file exists now.
  bool IsAlive(int32_t index) const noexcept { return files_.Exists(At(index).path.c_str()); }

  // Replaces the list by the file's content, as far as it can be read; a missing file is an empty
  // list.
  void Load() noexcept;

  // Forgets the list; nothing is saved.
  void Clear() noexcept { list_.Clear(); }

  [[nodiscard]] bool Add(const wchar_t* path, int32_t position_s,
                         const wchar_t* description) noexcept;

  // An index outside the list does nothing.
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

 private:
  void Save() noexcept;

  FileSystem& files_;
  InstallFolder& folder_;
  BookmarkList list_;
};

}  // namespace kelvo
