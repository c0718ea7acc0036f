// Any bytes as a bookmark file: what is read can be written, and reads back as itself.
#include <string>

#include "base/bytes/memory_source.h"
#include "base/text/wide.h"
#include "bookmarks/bookmark_list.h"
#include "tests/fuzz/require.h"

namespace {

class StringWriter final : public kelvo::FileWriter {
 public:
  bool Write(const void* data, size_t bytes) noexcept override {
    text.append(static_cast<const char*>(data), bytes);
    return true;
  }
  bool Flush() noexcept override { return true; }
  bool SeekFromEnd(uint32_t) noexcept override { return false; }
  void Close() noexcept override {}
  std::string text;
};

using kelvo::fuzz::Require;

// What a writer makes of it.
bool SameLine(const wchar_t* read, const wchar_t* written) {
  for (; *written != 0; ++read, ++written) {
    if (*read != (*written == L'\n' ? L' ' : *written)) return false;
  }
  return *read == 0;
}

kelvo::BookmarkList Read(const void* data, size_t bytes) {
  kelvo::MemorySource source(data, bytes);
  kelvo::BookmarkList list;
  kelvo::ReadBookmarks(source, &list);
  return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const kelvo::BookmarkList list = Read(data, size);
  for (const kelvo::Bookmark& bookmark : list) {
    Require(bookmark.path.c_str()[0] != 0);
    Require(kelvo::WideLength(bookmark.path.c_str()) < kelvo::kTextCapacity);
    Require(kelvo::WideLength(bookmark.description.c_str()) < kelvo::kTextCapacity);
  }
  StringWriter written;
  Require(kelvo::WriteBookmarks(written, list));
  const kelvo::BookmarkList again = Read(written.text.data(), written.text.size());
  Require(again.size() == list.size());
  for (int32_t i = 0; i < list.size(); ++i) {
    Require(SameLine(again[i].path.c_str(), list[i].path.c_str()));
    Require(SameLine(again[i].description.c_str(), list[i].description.c_str()));
    Require(again[i].position_s == list[i].position_s);
  }
  return 0;
}
