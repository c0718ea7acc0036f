#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/bytes/little_endian.h"
#include "base/bytes/memory_source.h"
#include "base/files/file_system.h"
#include "tests/support/faults.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

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

TEST(FilesTest, KeepsAttributes) {
  FileSystem& files = SystemFiles();
  ASSERT_TRUE(Write(kPath, "x"));
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeReadOnly));
  uint32_t attributes = 0;
  EXPECT_TRUE(files.GetAttributes(kPath, &attributes));
  EXPECT_TRUE(attributes & kAttributeReadOnly);
  EXPECT_TRUE(files.SetAttributes(kPath, kAttributeNormal));
  EXPECT_TRUE(files.Delete(kPath));
  EXPECT_FALSE(files.GetAttributes(kPath, &attributes));
  EXPECT_FALSE(files.SetAttributes(kPath, kAttributeNormal));
}

TEST(FilesTest, RefusesPathsThatAreTooLong) {
  const test::Wide path(std::string(260, 'a'));
  EXPECT_FALSE(SystemFiles().Create(path, Share::kNone));
  EXPECT_FALSE(SystemFiles().Exists(path));
}

TEST(FilesTest, OpensNothingWhenMemoryIsOut) {
  ASSERT_TRUE(Write(kPath, "x"));
  {
    test::HeapFaults faults(0);
    EXPECT_FALSE(SystemFiles().OpenRead(kPath, Share::kRead));
    EXPECT_TRUE(faults.triggered());
  }
  {
    test::HeapFaults faults(0);
    EXPECT_FALSE(SystemFiles().Create(kPath, Share::kNone));
    EXPECT_TRUE(faults.triggered());
  }
  {
    const OpenFile<FileReader> file = SystemFiles().OpenRead(kPath, Share::kRead);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->SizeBytes(), 1u) << "was not replaced";
  }
  EXPECT_TRUE(SystemFiles().Delete(kPath)) << "nothing was left open";
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

}  // namespace
}  // namespace kelvo
