#include "playlist/save_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::MemoryFiles;
using test::Utf8;
using test::Wide;

// Item n is the n-th text; its parent is n - 1.
class Chain final : public FolderItems {
 public:
  std::vector<std::string> texts;
  uintptr_t Parent(uintptr_t item) noexcept override { return item - 1; }
  void Text(uintptr_t item, wchar_t (&text)[kTextCapacity]) noexcept override {
    CopyWide(text, kTextCapacity, Wide(texts[item - 1]));
  }
};

TEST(SaveDialogStateTest, BuildsFolderPaths) {
  const struct {
    std::vector<std::string> texts;
    std::string want;
    bool fits;
  } cases[] = {
      {{"\\"}, "", true},
      {{"\\", "Docs"}, "\\Docs", true},
      {{"\\", "Docs", "Music"}, "\\Docs\\Music", true},
      {{"\\", std::string(258, 'n')}, "\\" + std::string(258, 'n'), true},
      {{"\\", std::string(259, 'n')}, "", false},
      {{"\\", std::string(200, 'n'), std::string(100, 'n')}, "", false},
  };
  for (const auto& c : cases) {
    Chain chain;
    chain.texts = c.texts;
    wchar_t path[kTextCapacity];
    std::fill(path, path + kTextCapacity, L'x');
    EXPECT_EQ(FolderPathOf(chain, c.texts.size(), path), c.fits);
    EXPECT_EQ(Utf8(path), c.want);
  }
}

TEST(SaveDialogStateTest, ShowsThePath) {
  const struct {
    std::string folder, name, want;
  } cases[] = {
      {"", "mix", "\\mix.m3u"},
      {"", "mix.txt", "\\mix.txt"},
      {"\\Docs", "", "\\Docs\\"},
      {"\\Docs", "a.b", "\\Docs\\a.b"},
      {std::string(255, 'f'), "abcdefgh", std::string(255, 'f') + "\\abc"},
  };
  for (const auto& c : cases) {
    SaveDialogState state;
    EXPECT_EQ(Utf8(state.path), "");
    CopyWide(state.folder, kTextCapacity, Wide(c.folder));
    CopyWide(state.name, kTextCapacity, Wide(c.name));
    state.UpdatePath();
    EXPECT_EQ(Utf8(state.path), c.want);
  }
}

TEST(SaveDialogStateTest, ProvesThatTheFileCanBeWritten) {
  using Check = SaveDialogState::Check;
  MemoryFiles files;
  files.PutFolder("\\Docs");
  files.Put("\\old.m3u", "old");
  files.Put("\\guarded.m3u", "old", kAttributeReadOnly);
  const struct {
    const wchar_t* path;
    Check check;
    bool writable;
  } cases[] = {
      {L"", Check::kEmpty, false},
      {L"\\new.m3u", Check::kFree, true},
      {L"\\none\\a.m3u", Check::kFree, false},
      {L"\\Docs", Check::kExists, false},
      {L"\\", Check::kExists, false},
      {L"\\Docs\\", Check::kExists, false},
      {L"\\old.m3u", Check::kExists, true},
      {L"\\guarded.m3u", Check::kExists, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(Utf8(c.path));
    SaveDialogState state;
    CopyWide(state.path, kTextCapacity, c.path);
    EXPECT_EQ(state.CheckPath(files), c.check);
    EXPECT_EQ(state.ProveWritable(files), c.writable);
    if (c.writable) {
      EXPECT_FALSE(files.Exists(c.path)) << "gone before the writer starts";
    }
    EXPECT_EQ(files.open_now, 0);
  }
  EXPECT_EQ(files.Find("\\guarded.m3u")->bytes, "old");
}

}  // namespace
}  // namespace kelvo
