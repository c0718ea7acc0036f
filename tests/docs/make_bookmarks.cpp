// Writes "bookmarks.dat" into the current folder, as the library does.
#include "bookmarks/bookmark_list.h"

int main() {
  kelvo::BookmarkList list;
  kelvo::Bookmark bookmark;
  bookmark.position_s = 75;
  if (!bookmark.path.Assign(L"\\a.ogg") || !bookmark.description.Assign(L"Solo") ||
      !list.Insert(0, std::move(bookmark))) {
    return 1;
  }
  auto file = kelvo::SystemFiles().Create(L"bookmarks.dat", kelvo::Share::kNone);
  return file && kelvo::WriteBookmarks(*file, list) ? 0 : 1;
}
