#include "playlist/save_dialog.h"

#include <stddef.h>
#include <string.h>

namespace kelvo {

static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, tree) == 4);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, dialog) == 8);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, menu_bar) == 12);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, succeeded) == 16);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, path) == 20);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, folder) == 540);
static_assert(sizeof(void*) != 4 || offsetof(SaveDialogState, name) == 1060);

bool FolderPathOf(FolderItems& items, uintptr_t item, wchar_t (&path)[kTextCapacity]) noexcept {
  // Built from its end towards the front.
  wchar_t text[kTextCapacity];
  size_t at = kTextCapacity - 1;
  path[at] = 0;
  for (; item != 0; item = items.Parent(item)) {
    items.Text(item, text);
    if (text[0] == L'\\') continue;
    const size_t length = WideLength(text);
    if (length + 1 > at) {
      path[0] = 0;
      return false;
    }
    at -= length;
    memcpy(path + at, text, length * sizeof(wchar_t));
    path[--at] = L'\\';
  }
  memmove(path, path + at, (kTextCapacity - at) * sizeof(wchar_t));
  return true;
}

void SaveDialogState::UpdatePath() noexcept {
  CopyWide(path, kTextCapacity, folder);
  const bool needs_extension = name[0] != 0 && !FindWide(name, L'.');
  static_cast<void>(AppendWide(path, kTextCapacity, L"\\") &&
                    AppendWide(path, kTextCapacity, name) &&
                    (!needs_extension || AppendWide(path, kTextCapacity, L".m3u")));
}

SaveDialogState::Check SaveDialogState::CheckPath(FileSystem& files) const noexcept {
  if (path[0] == 0) return Check::kEmpty;
  return files.Exists(path) ? Check::kExists : Check::kFree;
}

bool SaveDialogState::ProveWritable(FileSystem& files) noexcept {
  OpenFile<FileWriter> file = files.Create(path, Share::kWrite);
  if (!file) return false;
  file.Close();
  files.Delete(path);
  return true;
}

}  // namespace kelvo
