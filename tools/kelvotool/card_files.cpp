#include "tools/kelvotool/card_files.h"

#include "base/files/file_system.h"
#include "base/text/wide.h"

namespace kelvo::tool {
namespace {

// Folders may hold themselves, by links.
constexpr int kDeepestFolder = 40;

class Collector final : public FolderVisitor {
 public:
  Collector(const wchar_t* folder, Array<HeapText>* files, Array<HeapText>* folders,
            Progress* progress) noexcept
      : folder_(folder), files_(files), folders_(folders), progress_(progress) {}

  bool Visit(const FolderEntry& entry) noexcept override {
    wchar_t path[kTextCapacity];
    CopyWide(path, kTextCapacity, folder_);
    // What is longer than a path may be is no file of the player's.
    if (!AppendWide(path, kTextCapacity, L"\\") || !AppendWide(path, kTextCapacity, entry.name)) {
      return true;
    }
    HeapText copy;
    complete =
        copy.Assign(path) && (entry.is_folder() ? folders_ : files_)->Append(std::move(copy));
    progress_->Count();
    return complete;
  }
  bool complete = true;

 private:
  const wchar_t* folder_;
  Array<HeapText>* files_;
  Array<HeapText>* folders_;
  Progress* progress_;
};

bool IsSeparator(wchar_t c) noexcept {
  return c == L'\\' || c == L'/';
}

// Before the last name of the first `length` characters.
size_t FolderEnd(const wchar_t* path, size_t length) noexcept {
  while (length > 0 && !IsSeparator(path[length - 1])) --length;
  while (length > 0 && IsSeparator(path[length - 1])) --length;
  return length;
}

}  // namespace

bool CardFiles::SearchFolder(const wchar_t* folder, Array<HeapText>* folders,
                             Progress* progress) noexcept {
  wchar_t pattern[kTextCapacity];
  CopyWide(pattern, kTextCapacity, root_);
  const size_t length = WideLength(pattern);
  if (length > 0 && pattern[length - 1] == L'\\') pattern[length - 1] = 0;
  if (!AppendWide(pattern, kTextCapacity, folder) || !AppendWide(pattern, kTextCapacity, L"\\*")) {
    return true;
  }
  Collector collector(folder, &paths_, folders, progress);
  SystemFiles().List(pattern, collector);
  return collector.complete;
}

bool CardFiles::Search(const wchar_t* root) noexcept {
  root_ = root;
  Progress progress("kelvotool: looking through the device");
  Array<HeapText> level;
  if (!SearchFolder(L"", &level, &progress)) return false;
  for (int depth = 0; depth < kDeepestFolder && !level.empty(); ++depth) {
    Array<HeapText> next;
    for (const HeapText& folder : level) {
      if (!SearchFolder(folder.c_str(), &next, &progress)) return false;
    }
    level.Swap(next);
  }
  return true;
}

size_t CommonFolders(const wchar_t* a, const wchar_t* b) noexcept {
  size_t a_end = FolderEnd(a, WideLength(a)), b_end = FolderEnd(b, WideLength(b));
  size_t common = 0;
  while (a_end > 0 && b_end > 0) {
    const size_t a_next = FolderEnd(a, a_end), b_next = FolderEnd(b, b_end);
    size_t a_name = a_next, b_name = b_next;
    while (IsSeparator(a[a_name])) ++a_name;
    while (IsSeparator(b[b_name])) ++b_name;
    const size_t length = a_end - a_name;
    if (length != b_end - b_name || !EqualNoCase(a + a_name, b + b_name, length)) break;
    ++common;
    a_end = a_next;
    b_end = b_next;
  }
  return common;
}

}  // namespace kelvo::tool
