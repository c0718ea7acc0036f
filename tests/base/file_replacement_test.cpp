#include "base/files/file_replacement.h"

#include <gtest/gtest.h>

#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::MemoryFiles;
using test::Utf8;
using test::Wide;

// Writes the bytes in two pieces.
bool Replace(FileSystem& files, const wchar_t* path, const std::string& bytes) {
  FileReplacement replacement(files, path);
  const size_t half = bytes.size() / 2;
  return replacement && replacement.file().Write(bytes.data(), half) &&
         replacement.file().Write(bytes.data() + half, bytes.size() - half) && replacement.Commit();
}

std::string Newest(FileSystem& files, const wchar_t* path) {
  wchar_t newest[kTextCapacity];
  FileReplacement::FindNewest(files, path, newest);
  OpenFile<FileReader> file = files.OpenRead(newest, Share::kNone);
  if (!file) return "none";
  std::string bytes(static_cast<size_t>(file->SizeBytes()), '?');
  EXPECT_EQ(file->ReadAt(0, bytes.data(), bytes.size()), ReadResult::kOk);
  return bytes;
}

TEST(FileReplacementTest, LeavesTheOldOrTheNewFileWhateverFails) {
  for (const std::string old : {"old", "none"}) {
    for (const bool from_then_on : {false, true}) {
      SCOPED_TRACE(old + (from_then_on ? ", all later calls" : ", one call"));
      const long calls = test::Sweep([&](long n) {
        MemoryFiles files;
        if (old == "old") files["\\a.m3u"] = "old";
        files.FailAfter(n, from_then_on);
        const bool replaced = Replace(files, L"\\a.m3u", "the new one");
        const bool failed = files.fault_triggered();
        files.FailAfter(-1);
        EXPECT_EQ(files.open_now, 0);
        const MemoryFiles::File* there = files.Find("\\a.m3u");
        EXPECT_EQ(there ? there->bytes : "none", replaced ? "the new one" : old);
        const bool finished = files.Find("\\a.m3$") != nullptr;
        EXPECT_EQ(Newest(files, L"\\a.m3u"), replaced || finished ? "the new one" : old);
        EXPECT_FALSE(files.Find("\\a.m3$")) << "put in its place";
        EXPECT_TRUE(from_then_on || !files.Find("\\a.m3~"));
        EXPECT_TRUE(failed || replaced);
        return failed;
      });
      EXPECT_EQ(calls, 7) << "attributes, create, two writes, flush, two moves";
    }
  }
}

TEST(FileReplacementTest, ReadsTheFinishedFileThatCannotBeMoved) {
  MemoryFiles files;
  files["\\a.dat"] = "old";
  files["\\a.da$"] = "new";
  files["\\a.da~"] = "ne";
  files.Find("\\a.dat")->locked = true;
  EXPECT_EQ(Newest(files, L"\\a.dat"), "new");
  EXPECT_FALSE(Replace(files, L"\\a.dat", "newest"));
  EXPECT_EQ(Newest(files, L"\\a.dat"), "newest");
  files.Find("\\a.dat")->locked = false;
  EXPECT_TRUE(Replace(files, L"\\a.dat", ""));
  ASSERT_EQ(files.files().size(), 1u);
  EXPECT_EQ(files["\\a.dat"], "");
}

TEST(FileReplacementTest, WritesBesideAnyFile) {
  const std::string longest = "\\" + std::string(258, 'n');
  const struct {
    std::string path, beside;  // none: refused
  } cases[] = {
      {"\\a.m3u", "\\a.m3~"},
      {"\\a", "\\~"},
      {"\\a~", "\\a!"},
      {"\\a$", "\\a!"},
      {longest, "\\" + std::string(257, 'n') + "~"},
      {longest + "n", ""},
      {"", ""},
      {"\\", ""},
      {"\\f\\", ""},
      {"\\f/", ""},
      {"\\f", ""},
      {"\\kept", ""},
      {"\\none\\a", ""},
  };
  for (const auto& c : cases) {
    MemoryFiles files;
    files.PutFolder("\\f");
    files.Put("\\kept", "kept", kAttributeReadOnly);
    const size_t before = files.files().size();
    EXPECT_EQ(Replace(files, Wide(c.path), "new"), !c.beside.empty()) << c.path;
    const auto created = std::find(files.log.begin(), files.log.end(), "create " + c.beside);
    EXPECT_EQ(created != files.log.end(), !c.beside.empty()) << c.path;
    EXPECT_EQ(files.files().size(), before + !c.beside.empty()) << c.path;
    EXPECT_EQ(files["\\kept"], "kept");
  }
}

TEST(FileReplacementTest, ReplacesTheSystemsFiles) {
  FileSystem& files = SystemFiles();
  constexpr wchar_t kPath[] = L"replaced.tmp";
  files.Delete(kPath);
  for (const char* bytes : {"first", "second"}) {
    EXPECT_TRUE(Replace(files, kPath, bytes));
    EXPECT_EQ(Newest(files, kPath), bytes);
  }
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeReadOnly));
  EXPECT_FALSE(Replace(files, kPath, "third"));
  EXPECT_EQ(Newest(files, kPath), "second");
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeNormal));
  EXPECT_FALSE(files.Replace(L"no such file.tmp", kPath));
  EXPECT_TRUE(files.Exists(kPath) && files.Delete(kPath));
  EXPECT_FALSE(files.Exists(L"replaced.tm~") || files.Exists(L"replaced.tm$"));
}

}  // namespace
}  // namespace kelvo
