#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/bytes/little_endian.h"
#include "base/bytes/memory_source.h"
#include "base/files/file_replacement.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::MemoryFiles;
using test::Wide;

constexpr const wchar_t kPath[] = L"files_test.tmp";
constexpr const wchar_t kOther[] = L"files_test_moved.tmp";

class Names final : public FolderVisitor {
 public:
  bool Visit(const FolderEntry& entry) noexcept override {
    names.push_back(test::Utf8(entry.name) + (entry.is_folder() ? "/" : ""));
    return true;
  }
  std::vector<std::string> names;
};

bool Write(const wchar_t* path, const std::string& bytes) {
  OpenFile<FileWriter> file = SystemFiles().Create(path, Share::kNone);
  return file && file->Write(bytes.data(), bytes.size());
}

std::string ReadAll(ByteSource& source) {
  std::string bytes(64, '\0');
  size_t got = 0;
  EXPECT_EQ(source.ReadSome(0, bytes.data(), bytes.size(), &got), ReadResult::kOk);
  bytes.resize(got);
  return bytes;
}

TEST(FilesTest, WritesReadsPatchesMovesAndDeletes) {
  FileSystem& files = SystemFiles();
  files.Delete(kPath);
  files.Delete(kOther);
  EXPECT_FALSE(files.OpenRead(kPath, Share::kRead));
  EXPECT_FALSE(files.OpenWrite(kPath, Share::kNone)) << "opening for writing creates nothing";
  ASSERT_TRUE(Write(kPath, "0123456789"));
  {
    OpenFile<FileWriter> file = files.OpenWrite(kPath, Share::kWrite);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->SeekFromEnd(11)) << "before the start";
    EXPECT_TRUE(file->SeekFromEnd(3) && file->Write("ABC", 3));
    EXPECT_TRUE(file->SeekFromEnd(0) && file->Write("D", 1));
  }
  {
    OpenFile<FileReader> file = files.OpenRead(kPath, Share::kRead);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->SizeBytes(), 11u);
    EXPECT_EQ(ReadAll(*file), "0123456ABCD");
    char two[2];
    EXPECT_EQ(file->ReadAt(9, two, 2), ReadResult::kOk);
    EXPECT_EQ(std::string(two, 2), "CD");
    EXPECT_EQ(file->ReadAt(10, two, 2), ReadResult::kEnd);
    EXPECT_EQ(file->ReadAt(~0ull, two, 2), ReadResult::kEnd);
  }
  ASSERT_TRUE(Write(kPath, "x")) << "creating replaces";
  EXPECT_TRUE(files.Move(kPath, kOther));
  EXPECT_FALSE(files.Exists(kPath));
  ASSERT_TRUE(Write(kPath, "y"));
  EXPECT_FALSE(files.Move(kPath, kOther)) << "moving never overwrites";
  Names found;
  EXPECT_TRUE(files.List(L".\\files_test*.tmp", found));
  std::sort(found.names.begin(), found.names.end());
  EXPECT_EQ(found.names, (std::vector<std::string>{"files_test.tmp", "files_test_moved.tmp"}));
  EXPECT_FALSE(files.List(L".\\no such folder\\*.*", found));
  EXPECT_TRUE(files.Delete(kPath) && files.Delete(kOther));
  EXPECT_FALSE(files.Delete(kPath));
}

TEST(FilesTest, RefusesWhatIsTooLongReadOnlyGoneOrWithoutMemory) {
  FileSystem& files = SystemFiles();
  const Wide longest(std::string(260, 'a'));
  EXPECT_FALSE(files.Create(longest, Share::kNone) || files.Exists(longest));
  ASSERT_TRUE(Write(kPath, "x"));
  for (const bool create : {false, true}) {
    const test::HeapFaults faults(0);
    EXPECT_FALSE(create ? static_cast<bool>(files.Create(kPath, Share::kNone))
                        : static_cast<bool>(files.OpenRead(kPath, Share::kRead)));
    EXPECT_TRUE(faults.triggered());
  }
  EXPECT_EQ(files.OpenRead(kPath, Share::kRead)->SizeBytes(), 1u) << "was not replaced";
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeReadOnly));
  uint32_t attributes = 0;
  EXPECT_TRUE(files.GetAttributes(kPath, &attributes) && (attributes & kAttributeReadOnly));
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeNormal));
  EXPECT_TRUE(files.Delete(kPath)) << "nothing was left open";
  EXPECT_FALSE(files.GetAttributes(kPath, &attributes));
  EXPECT_FALSE(files.SetAttributes(kPath, kAttributeNormal));
}

TEST(BytesTest, ReadsWithinTheEndsOnly) {
  const uint8_t bytes[] = {0x01, 0x82, 0x03, 0x84, 0x05, 0x06, 0x07, 0x88};
  EXPECT_EQ(LoadU16(bytes), 0x8201u);
  EXPECT_EQ(LoadU32(bytes), 0x84038201u);
  EXPECT_EQ(LoadU64(bytes), 0x8807060584038201u);
  MemorySource source(bytes, sizeof(bytes));
  uint8_t out[8];
  EXPECT_EQ(source.ReadAt(8, out, 0), ReadResult::kOk);
  EXPECT_EQ(source.ReadAt(7, out, 2), ReadResult::kEnd);
  EXPECT_EQ(source.ReadAt(~0ull, out, 1), ReadResult::kEnd);
}

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
  constexpr wchar_t kReplaced[] = L"replaced.tmp";
  files.Delete(kReplaced);
  for (const char* bytes : {"first", "second"}) {
    EXPECT_TRUE(Replace(files, kReplaced, bytes));
    EXPECT_EQ(Newest(files, kReplaced), bytes);
  }
  EXPECT_TRUE(files.SetAttributes(kReplaced, kAttributeReadOnly));
  EXPECT_FALSE(Replace(files, kReplaced, "third"));
  EXPECT_EQ(Newest(files, kReplaced), "second");
  EXPECT_TRUE(files.SetAttributes(kReplaced, kAttributeNormal));
  EXPECT_FALSE(files.Replace(L"no such file.tmp", kReplaced));
  EXPECT_TRUE(files.Exists(kReplaced) && files.Delete(kReplaced));
  EXPECT_FALSE(files.Exists(L"replaced.tm~") || files.Exists(L"replaced.tm$"));
}

}  // namespace
}  // namespace kelvo
