// A bookmark, readable; and where the file is.
#pragma once

#include <string>

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

// "path|position|description".
inline std::string Text(const Bookmark& bookmark) {
  return Utf8(bookmark.path.c_str()) + "|" + std::to_string(bookmark.position_s) + "|" +
         Utf8(bookmark.description.c_str());
}

}  // namespace kelvo::test
