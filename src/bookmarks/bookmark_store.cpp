#include "bookmarks/bookmark_store.h"

#include <stddef.h>

#include "base/files/file_replacement.h"

namespace kelvo {
namespace {

static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, list_view) == 4);
static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, menu_bar) == 8);
static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, list) == 12);
static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, position_text) == 24);
static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, sort_column) == 72);
static_assert(sizeof(void*) != 4 || offsetof(BookmarksState, sort_direction) == 76);

constexpr wchar_t kLastPlayed[] = L"(Last Played) ";
constexpr size_t kLastPlayedLength = sizeof(kLastPlayed) / sizeof(wchar_t) - 1;

constexpr wchar_t kFileName[] = L"\\bookmarks.dat";
constexpr wchar_t kUnreadName[] = L"\\bookmarks.bak";

// Too long a folder gives a path that the file system refuses.
class FilePath {
 public:
  static constexpr size_t kNameCapacity = sizeof(kFileName) / sizeof(wchar_t);
  FilePath(InstallFolder& folder, const wchar_t (&name)[kNameCapacity]) noexcept {
    wchar_t installed[kTextCapacity];
    folder.Read(installed);
    const size_t length = CopyWide(path_, kTextCapacity, installed);
    CopyWide(path_ + length, sizeof(path_) / sizeof(wchar_t) - length, name);
  }
  const wchar_t* c_str() const noexcept { return path_; }

 private:
  wchar_t path_[kTextCapacity + kNameCapacity];
};

// A text as a bookmark keeps it.
struct CutText {
  explicit CutText(const wchar_t* value) noexcept
      : length(CopyWide(text, kTextCapacity, value ? value : L"")) {}
  wchar_t text[kTextCapacity];
  size_t length;
};

[[nodiscard]] bool Make(Bookmark* bookmark, const wchar_t* path, int32_t position_s,
                        const wchar_t* description) noexcept {
  const CutText cut_path(path);
  const CutText cut_description(description);
  bookmark->position_s = position_s;
  return bookmark->path.Assign(cut_path.text, cut_path.length) &&
         bookmark->description.Assign(cut_description.text, cut_description.length);
}

}  // namespace

int32_t BookmarkStore::Find(int32_t index, const wchar_t* path, int32_t position_s,
                            const wchar_t* description) const noexcept {
  const auto is_it = [&](int32_t i) {
    return At(i).position_s == position_s && CompareWide(At(i).path.c_str(), path) == 0 &&
           CompareWide(At(i).description.c_str(), description) == 0;
  };
  if (Contains(index) && is_it(index)) return index;
  for (int32_t i = 0; i < size(); ++i) {
    if (is_it(i)) return i;
  }
  return -1;
}

void BookmarkStore::Load() noexcept {
  state_.list.Clear();
  const FilePath path(folder_, kFileName);
  wchar_t newest[kTextCapacity];
  FileReplacement::FindNewest(files_, path.c_str(), newest);
  OpenFile<FileReader> file = files_.OpenRead(newest, Share::kNone);
  unread_ = file ? !ReadBookmarks(*file, &state_.list) : files_.Exists(newest);
}

void BookmarkStore::Save() noexcept {
  const FilePath path(folder_, kFileName);
  if (unread_) {
    const FilePath aside(folder_, kUnreadName);
    wchar_t newest[kTextCapacity];
    FileReplacement::FindNewest(files_, path.c_str(), newest);
    if (files_.Exists(newest) && !files_.Replace(newest, aside.c_str())) return;
    unread_ = false;
  }
  FileReplacement replacement(files_, path.c_str());
  // Nobody is told when this fails: the list in memory is still right and the next change tries
  // again.
  if (replacement && WriteBookmarks(replacement.file(), state_.list)) {
    static_cast<void>(replacement.Commit());
  }
}

bool BookmarkStore::Add(const wchar_t* path, int32_t position_s,
                        const wchar_t* description) noexcept {
  Bookmark added;
  if (!state_.list.Grow() || !Make(&added, path, position_s, description) ||
      !state_.list.Insert(size(), std::move(added))) {
    return false;
  }
  Save();
  return true;
}

void BookmarkStore::Update(int32_t index, const wchar_t* path, int32_t position_s,
                           const wchar_t* description) noexcept {
  if (!Contains(index)) return;
  Bookmark& bookmark = state_.list[index];
  const CutText new_path(path);
  const CutText new_description(description);
  // Memory for both first: a bookmark is not half changed.
  if (!bookmark.path.Reserve(new_path.length) ||
      !bookmark.description.Reserve(new_description.length)) {
    return;
  }
  bookmark.path.Overwrite(new_path.text, new_path.length);
  bookmark.description.Overwrite(new_description.text, new_description.length);
  bookmark.position_s = position_s;
  Save();
}

void BookmarkStore::Remove(int32_t index) noexcept {
  if (!Contains(index)) return;
  state_.list.RemoveAt(index);
  Save();
}

void BookmarkStore::RemoveDead() noexcept {
  for (int32_t i = size(); i-- > 0;) {
    if (!IsAlive(i)) state_.list.RemoveAt(i);
  }
  Save();
}

bool BookmarkStore::HasLastPlayed() const noexcept {
  return size() > 0 && EqualAsciiNoCase(At(0).description.c_str(), kLastPlayed, kLastPlayedLength);
}

void BookmarkStore::SetLastPlayed(const wchar_t* path, int32_t position_s,
                                  const wchar_t* title) noexcept {
  wchar_t description[kTextCapacity];
  const size_t length = CopyWide(description, kTextCapacity, kLastPlayed);
  CopyWide(description + length, kTextCapacity - length, title ? title : L"");

  Bookmark last;
  if (!state_.list.Grow() || !Make(&last, path, position_s, description)) return;
  if (HasLastPlayed()) {
    state_.list[0] = std::move(last);
  } else if (!state_.list.Insert(0, std::move(last))) {
    return;
  }
  Save();
}

void BookmarkStore::SortBy(BookmarkColumn column) noexcept {
  state_.sort_direction = column == state_.sort_column ? -state_.sort_direction : 1;
  state_.sort_column = column;
}

int BookmarkStore::Compare(int32_t a, int32_t b) const noexcept {
  int order = 0;
  switch (state_.sort_column) {
    case BookmarkColumn::kState:
      order = IsAlive(b) - IsAlive(a);
      break;
    case BookmarkColumn::kTime:  // the difference may not fit
      order = (At(a).position_s > At(b).position_s) - (At(a).position_s < At(b).position_s);
      break;
    case BookmarkColumn::kTitle:
      order = CompareNoCase(At(a).description.c_str(), At(b).description.c_str());
      break;
  }
  return state_.sort_direction * order;
}

}  // namespace kelvo
