// Any bytes as a bookmark file: read as the model reads it, and what is written is what the model
// writes.
#include "base/bytes/memory_source.h"
#include "bookmarks/bookmark_list.h"
#include "tests/fuzz/require.h"
#include "tests/oracles/bookmarks_model.h"

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

bool Is(const kelvo::HeapText& text, const kelvo::oracle::Units& units) {
  return units == reinterpret_cast<const char16_t*>(text.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kelvo::MemorySource source(data, size);
  kelvo::BookmarkList list;
  kelvo::ReadBookmarks(source, &list);
  kelvo::oracle::BookmarksModel model;
  model.file.assign(reinterpret_cast<const char*>(data), size);
  model.Load();
  Require(static_cast<size_t>(list.size()) == model.list.size());
  for (int32_t i = 0; i < list.size(); ++i) {
    const kelvo::oracle::BookmarkOf& want = model.list[static_cast<size_t>(i)];
    Require(Is(list[i].path, want.path) && Is(list[i].description, want.description));
    Require(list[i].position_s == want.position_s);
  }
  StringWriter written;
  Require(kelvo::WriteBookmarks(written, list));
  model.Save();
  Require(written.text == model.file);
  return 0;
}
