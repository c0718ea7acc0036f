#include "playlist/save/save_target.h"

#include <string.h>

namespace kelvo {

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

void SaveTarget::UpdatePath() noexcept {
  CopyWide(path_, kTextCapacity, folder_);
  const bool needs_extension = name_[0] != 0 && !FindWide(name_, L'.');
  static_cast<void>(AppendWide(path_, kTextCapacity, L"\\") &&
                    AppendWide(path_, kTextCapacity, name_) &&
                    (!needs_extension || AppendWide(path_, kTextCapacity, L".m3u")));
}

SaveTarget::Check SaveTarget::CheckPath(FileSystem& files) const noexcept {
  if (path_[0] == 0) return Check::kEmpty;
  return files.Exists(path_) ? Check::kExists : Check::kFree;
}

bool SaveTarget::ProveWritable(FileSystem& files) noexcept {
  OpenFile<FileWriter> file = files.Create(path_, Share::kWrite);
  if (!file) return false;
  file.Close();
  files.Delete(path_);
  return true;
}

}  // namespace kelvo
