#include "playlist/save/save_target.h"

#include <gtest/gtest.h>

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

TEST(SaveTargetTest, BuildsFolderPaths) {
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
    EXPECT_EQ(FolderPathOf(chain, c.texts.size(), path), c.fits);
    EXPECT_EQ(Utf8(path), c.want);
  }
}

TEST(SaveTargetTest, ShowsThePath) {
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
    SaveTarget target;
    EXPECT_EQ(Utf8(target.path()), "");
    target.SetFolder(Wide(c.folder));
    target.SetName(Wide(c.name));
    target.UpdatePath();
    EXPECT_EQ(Utf8(target.path()), c.want);
  }
}

TEST(SaveTargetTest, ProvesThatTheFileCanBeWritten) {
  MemoryFiles files;
  files.PutFolder("\\Docs");
  files.Put("\\old.m3u", "old");
  files.Put("\\guarded.m3u", "old", kAttributeReadOnly);
  SaveTarget target;
  EXPECT_EQ(target.CheckPath(files), SaveTarget::Check::kEmpty);
  target.SetPath(L"\\new.m3u");
  EXPECT_EQ(target.CheckPath(files), SaveTarget::Check::kFree);
  files.log.clear();
  EXPECT_TRUE(target.ProveWritable(files));
  EXPECT_EQ(files.log, (std::vector<std::string>{"create \\new.m3u", "delete \\new.m3u"}));
  EXPECT_FALSE(files.Find("\\new.m3u"));
  for (const wchar_t* path : {L"\\Docs", L"\\guarded.m3u", L"\\old.m3u"}) {
    target.SetPath(path);
    EXPECT_EQ(target.CheckPath(files), SaveTarget::Check::kExists);
    EXPECT_EQ(target.ProveWritable(files), CompareWide(path, L"\\old.m3u") == 0);
  }
  EXPECT_FALSE(files.Find("\\old.m3u")) << "gone before the writer starts";
  EXPECT_EQ(files.open_now, 0);
}

}  // namespace
}  // namespace kelvo
