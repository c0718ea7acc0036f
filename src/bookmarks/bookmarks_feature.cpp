#include "bookmarks/bookmarks_feature.h"

#include "base/memory/heap.h"

namespace kelvo {

static_assert(kMaxText == kTextCapacity, "stored texts fit the host's buffers");
static_assert(sizeof(Bookmarks) == sizeof(void*), "the store follows the table of operations");

int32_t BookmarksFeature::AddBookmark(const wchar_t* path, int32_t position_s,
                                      const wchar_t* description) noexcept {
  return store_.Add(path, position_s, description);
}

void BookmarksFeature::UpdateBookmark(int32_t index, const wchar_t* path, int32_t position_s,
                                      const wchar_t* description) noexcept {
  store_.Update(index, path, position_s, description);
}

int32_t BookmarksFeature::GetBookmark(int32_t index, wchar_t* path, wchar_t* description,
                                      int32_t* position_s) noexcept {
  if (!store_.Contains(index)) return 0;
  const Bookmark& bookmark = store_.At(index);
  if (path) CopyWide(path, kMaxText, bookmark.path.c_str());
  if (description) CopyWide(description, kMaxText, bookmark.description.c_str());
  if (position_s) *position_s = bookmark.position_s;
  return store_.IsAlive(index);
}

int32_t BookmarksFeature::LoadBookmarks() noexcept {
  store_.Load();
  return store_.size();
}

int32_t BookmarksFeature::ShowBookmarks(WindowHandle parent) noexcept {
  return window_ && window_->Run(parent, store_) ? 0 : 1;
}

void BookmarksFeature::Destroy(uint32_t flags) noexcept {
  store_.Clear();
  if (flags & 1) HeapDelete(this);
}

void BookmarksFeature::SetLastPlayed(const wchar_t* path, int32_t position_s,
                                     const wchar_t* title) noexcept {
  store_.SetLastPlayed(path, position_s, title);
}

int32_t BookmarksFeature::TakeLastPlayed(wchar_t* path, int32_t* position_s) noexcept {
  if (!GetBookmark(0, path, nullptr, position_s) || !store_.HasLastPlayed()) return 0;
  store_.Remove(0);
  return 1;
}

}  // namespace kelvo
