// The text of a bookmark file and of a list, readable; and where the file is.
#pragma once

#include <string>
#include <vector>

#include "base/bytes/memory_source.h"
#include "bookmarks/bookmark_store.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

class FixedFolder final : public InstallFolder {
 public:
  explicit FixedFolder(const std::string& folder = "\\V") : path(folder) {}
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override {
    CopyWide(folder, kTextCapacity, Wide(path));
  }
  std::string path;
};

inline std::string Text(const Bookmark& bookmark) {
  return Utf8(bookmark.path.c_str()) + "|" + std::to_string(bookmark.position_s) + "|" +
         Utf8(bookmark.description.c_str());
}

// "path|position|description" a bookmark.
inline std::vector<std::string> Texts(const BookmarkList& list) {
  std::vector<std::string> texts;
  for (const Bookmark& bookmark : list) texts.push_back(Text(bookmark));
  return texts;
}

inline std::vector<std::string> ReadTexts(const std::string& bytes) {
  MemorySource source(bytes.data(), bytes.size());
  BookmarkList list;
  ReadBookmarks(source, &list);
  return Texts(list);
}

}  // namespace kelvo::test
