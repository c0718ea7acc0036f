// Where a playlist will be saved: the dialog, and what it decides.
#pragma once

#include "base/files/file_system.h"
#include "base/text/wide.h"
#include "kelvo/types.h"

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

// What a host finds behind the dialog's parameter, in this order.
struct SaveDialogState {
  ModuleHandle host_module = nullptr;  // where template, menu bar, icons and texts are
  WindowHandle tree = nullptr;         // these three while the dialog is open
  WindowHandle dialog = nullptr;
  WindowHandle menu_bar = nullptr;
  int32_t succeeded = 0;             // 1: `path` has been accepted
  wchar_t path[kTextCapacity] = {};  // the path line, as the user sees it; the result
  wchar_t folder[kTextCapacity] = {};
  wchar_t name[kTextCapacity] = {};

  // The path line: folder, backslash and name, with ".m3u" when the name has no point. What does
  // not fit is cut off.
  void UpdatePath() noexcept;

  enum class Check { kEmpty, kExists, kFree };
  Check CheckPath(FileSystem& files) const noexcept;
  // Creates the file and deletes it again at once: an old playlist is gone after this.
  bool ProveWritable(FileSystem& files) noexcept;
};

// The dialog, windows/save_dialog.cpp: lets the user choose a folder in a tree of the device's
// folders, and a name. Template, menu bar, icons and texts are the host's. False when the user
// closed it, or it could not open: a dialog of the library is open already. After true, state->path
// can be written, and no file is there.
bool AskWhereToSave(FileSystem& files, ModuleHandle host_module, WindowHandle parent,
                    SaveDialogState* state) noexcept;

}  // namespace kelvo
