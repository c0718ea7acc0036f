#include "base/files/file_replacement.h"

namespace kelvo {
namespace {

constexpr wchar_t kUnfinished[] = L"~!";
constexpr wchar_t kFinished[] = L"$#";

// The path with another last character, so that it fits wherever the path does: the first mark, or
// the second one where the path itself ends as a marked one does. Empty when no file has the path.
void MarkPath(wchar_t (&marked)[kTextCapacity], const wchar_t* path,
              const wchar_t (&marks)[3]) noexcept {
  const size_t length = WideLength(path);
  marked[0] = 0;
  if (length == 0 || length >= kTextCapacity || FindWide(L"\\/", path[length - 1])) return;
  CopyWide(marked, kTextCapacity, path);
  const bool is_marked = path[length - 1] == kUnfinished[0] || path[length - 1] == kFinished[0];
  marked[length - 1] = marks[is_marked ? 1 : 0];
}

bool CanBeReplaced(FileSystem& files, const wchar_t* path) noexcept {
  uint32_t attributes;
  return !files.GetAttributes(path, &attributes) ||
         (attributes & (kAttributeFolder | kAttributeReadOnly)) == 0;
}

}  // namespace

FileReplacement::FileReplacement(FileSystem& files, const wchar_t* path) noexcept
    : files_(files), path_(path) {
  MarkPath(unfinished_, path, kUnfinished);
  if (unfinished_[0] != 0 && CanBeReplaced(files, path)) {
    file_ = files.Create(unfinished_, Share::kNone);
  }
}

void FileReplacement::Discard() noexcept {
  if (!file_) return;
  file_.Close();
  files_.Delete(unfinished_);
}

bool FileReplacement::Commit() noexcept {
  if (!file_->Flush()) {
    Discard();
    return false;
  }
  file_.Close();
  wchar_t finished[kTextCapacity];
  MarkPath(finished, path_, kFinished);
  if (!files_.Replace(unfinished_, finished)) {
    files_.Delete(unfinished_);
    return false;
  }
  return files_.Replace(finished, path_);
}

void FileReplacement::FindNewest(FileSystem& files, const wchar_t* path,
                                 wchar_t (&newest)[kTextCapacity]) noexcept {
  MarkPath(newest, path, kFinished);
  if (newest[0] == 0) return;
  if (!files.Exists(newest) || files.Replace(newest, path)) CopyWide(newest, kTextCapacity, path);
}

}  // namespace kelvo
