// Where a playlist will be saved: what the save dialog decides.
#pragma once

#include "base/files/file_system.h"
#include "base/text/wide.h"

namespace kelvo {

// The dialog's tree of folders, the control's item handles; 0 is none.
class FolderItems {
 public:
  virtual uintptr_t Parent(uintptr_t item) noexcept = 0;
  virtual void Text(uintptr_t item, wchar_t (&text)[kTextCapacity]) noexcept = 0;

 protected:
  ~FolderItems() = default;
};

// The folder that an item stands for: "" for the root, "\Docs\Music" below it. False, with the
// empty text, when the path is too long.
bool FolderPathOf(FolderItems& items, uintptr_t item, wchar_t (&path)[kTextCapacity]) noexcept;

class SaveTarget {
 public:
  void SetFolder(const wchar_t* folder) noexcept { CopyWide(folder_, kTextCapacity, folder); }
  void SetName(const wchar_t* name) noexcept { CopyWide(name_, kTextCapacity, name); }
  const wchar_t* folder() const noexcept { return folder_; }
  const wchar_t* name() const noexcept { return name_; }

  // The path line: folder, backslash and name, with ".m3u" when the name has no point. What does
  // not fit is cut off.
  void UpdatePath() noexcept;
  const wchar_t* path() const noexcept { return path_; }
  // The line as the user sees it counts when saving.
  void SetPath(const wchar_t* path) noexcept { CopyWide(path_, kTextCapacity, path); }

  enum class Check { kEmpty, kExists, kFree };
  Check CheckPath(FileSystem& files) const noexcept;
  // Creates the file and deletes it again at once: an old playlist is gone after this.
  bool ProveWritable(FileSystem& files) noexcept;

 private:
  wchar_t folder_[kTextCapacity] = {};
  wchar_t name_[kTextCapacity] = {};
  wchar_t path_[kTextCapacity] = {};
};

}  // namespace kelvo
