#include "bookmarks/bookmark_store.h"

#include "base/text/wide.h"
#include "bookmarks/bookmark_file.h"

namespace kelvo {
namespace {

constexpr wchar_t kLastPlayed[] = L"(Last Played) ";
constexpr size_t kLastPlayedLength = sizeof(kLastPlayed) / sizeof(wchar_t) - 1;

// Too long a folder gives a path that the file system refuses.
class FilePath {
 public:
  explicit FilePath(InstallFolder& folder) noexcept {
    wchar_t installed[kTextCapacity];
    folder.Read(installed);
    const size_t length = CopyWide(path_, kTextCapacity, installed);
    CopyWide(path_ + length, sizeof(path_) / sizeof(wchar_t) - length, kName);
  }
  const wchar_t* c_str() const noexcept { return path_; }

 private:
  static constexpr wchar_t kName[] = L"\\bookmarks.dat";
  wchar_t path_[kTextCapacity + sizeof(kName) / sizeof(wchar_t)];
};

[[nodiscard]] bool Store(HeapText* text, const wchar_t* value) noexcept {
  wchar_t cut[kTextCapacity];
  return text->Assign(cut, CopyWide(cut, kTextCapacity, value ? value : L""));
}

[[nodiscard]] bool Make(Bookmark* bookmark, const wchar_t* path, int32_t position_s,
                        const wchar_t* description) noexcept {
  bookmark->position_s = position_s;
  return Store(&bookmark->path, path) && Store(&bookmark->description, description);
}

}  // namespace

void BookmarkStore::Load() noexcept {
  list_.Clear();
  const FilePath path(folder_);
  OpenFile<FileReader> file = files_.OpenRead(path.c_str(), Share::kNone);
  if (file) ReadBookmarks(*file, &list_);
}

void BookmarkStore::Save() noexcept {
  const FilePath path(folder_);
  OpenFile<FileWriter> file = files_.Create(path.c_str(), Share::kNone);
  // Nobody is told when this fails: the list in memory is still right and the next change tries
  // again.
  if (file) static_cast<void>(WriteBookmarks(*file, list_));
}

bool BookmarkStore::Add(const wchar_t* path, int32_t position_s,
                        const wchar_t* description) noexcept {
  Bookmark added;
  if (!GrowBookmarks(&list_) || !Make(&added, path, position_s, description) ||
      !list_.Append(std::move(added))) {
    return false;
  }
  Save();
  return true;
}

void BookmarkStore::Update(int32_t index, const wchar_t* path, int32_t position_s,
                           const wchar_t* description) noexcept {
  Bookmark changed;
  if (!Contains(index) || !Make(&changed, path, position_s, description)) return;
  list_[static_cast<size_t>(index)] = std::move(changed);
  Save();
}

void BookmarkStore::Remove(int32_t index) noexcept {
  if (!Contains(index)) return;
  list_.RemoveAt(static_cast<size_t>(index));
  Save();
}

void BookmarkStore::RemoveDead() noexcept {
  for (size_t i = list_.size(); i-- > 0;) {
    if (!files_.Exists(list_[i].path.c_str())) list_.RemoveAt(i);
  }
  Save();
}

bool BookmarkStore::HasLastPlayed() const noexcept {
  return !list_.empty() &&
         EqualAsciiNoCase(list_[0].description.c_str(), kLastPlayed, kLastPlayedLength);
}

void BookmarkStore::SetLastPlayed(const wchar_t* path, int32_t position_s,
                                  const wchar_t* title) noexcept {
  wchar_t description[kTextCapacity];
  const size_t length = CopyWide(description, kTextCapacity, kLastPlayed);
  CopyWide(description + length, kTextCapacity - length, title ? title : L"");

  Bookmark last;
  if (!GrowBookmarks(&list_) || !Make(&last, path, position_s, description)) return;
  if (HasLastPlayed()) {
    list_[0] = std::move(last);
  } else if (!list_.Insert(0, std::move(last))) {
    return;
  }
  Save();
}

}  // namespace kelvo
