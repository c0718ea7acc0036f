#include "skins/skin_feature.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::Wide;
using test::ZipBuilder;

const char* const kNames[] = {
    "balance.bmp", "cbuttons.bmp", "eq_ex.bmp",    "eqmain.bmp",   "main.bmp",   "monoster.bmp",
    "numbers.bmp", "nums_ex.bmp",  "playpaus.bmp", "pledit.bmp",   "pledit.txt", "posbar.bmp",
    "shufrep.bmp", "text.bmp",     "titlebar.bmp", "viscolor.txt", "volume.bmp"};

// Frees the block as the host does.
std::string Take(void* block, uint32_t size) {
  if (!block) return size == 0 ? "none" : "a size without a block";
  const std::string text(static_cast<char*>(block), size);
  free(block);
  return "<" + text + ">";
}

class SkinFeatureTest : public ::testing::Test {
 protected:
  std::string Folder(int32_t number, const wchar_t* folder = L"\\S") {
    uint32_t size = 99;
    void* block = feature_.ReadFromFolder(folder, number, &size);
    return Take(block, size);
  }
  std::string Archive(int32_t number, const wchar_t* archive = L"\\S.zip") {
    uint32_t size = 99;
    void* block = feature_.ReadFromArchive(archive, number, &size);
    return Take(block, size);
  }

  test::MemoryFiles files_;
  SkinReaderFeature feature_{files_};
};

TEST_F(SkinFeatureTest, NumbersStandForTheSeventeenNames) {
  ZipBuilder zip;
  for (const char* name : kNames) {
    files_["\\S\\" + std::string(name)] = name;
    zip.Add({name, name});
  }
  files_["\\S.zip"] = zip.Bytes();
  for (int32_t number = 1; number <= 17; ++number) {
    const std::string want = "<" + std::string(kNames[number - 1]) + ">";
    EXPECT_EQ(Folder(number), want);
    EXPECT_EQ(Archive(number), want);
  }
  for (int32_t number : {0, -1, 18, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(Folder(number), "none");
    EXPECT_EQ(Archive(number), "none");
  }
  EXPECT_EQ(files_.open_now, 0);
}

TEST_F(SkinFeatureTest, MissingFilesGiveNothing) {
  files_["\\S\\main.bmp"] = std::string("\0\x01\0", 3);
  files_["\\S\\text.bmp"];
  files_["\\S.zip"] = ZipBuilder().Add({"text.bmp", ""}).Bytes();
  EXPECT_EQ(Folder(kSkinMain), std::string("<\0\x01\0>", 5));
  EXPECT_EQ(Folder(kSkinText), "<>") << "an empty file is a block of size 0";
  EXPECT_EQ(Archive(kSkinText), "<>");
  EXPECT_EQ(Folder(kSkinColours), "none");
  EXPECT_EQ(Archive(kSkinColours), "none");
  EXPECT_EQ(Folder(kSkinMain, L"\\T"), "none");
  EXPECT_EQ(Folder(kSkinMain, nullptr), "none");
  EXPECT_EQ(Archive(kSkinText, L"\\T.zip"), "none");
  EXPECT_EQ(Archive(kSkinText, nullptr), "none");
  EXPECT_EQ(Archive(kSkinText, L"\\S\\main.bmp"), "none");
}

TEST_F(SkinFeatureTest, FolderPathsOf260CharactersAreRefused) {
  const std::string longest = "\\" + std::string(249, 'f');
  files_[longest + "\\main.bmp"] = "x";
  EXPECT_EQ(Folder(kSkinMain, Wide(longest)), "<x>");
  for (size_t more : {1, 2, 9, 10, 11, 1000}) {
    // A cut path must not name another file.
    files_[(longest + std::string(more, 'f') + "\\main.bmp").substr(0, 259)] = "other";
    EXPECT_EQ(Folder(kSkinMain, Wide(longest + std::string(more, 'f'))), "none") << more;
  }
}

// The skin that the build makes beside the programs, as a folder and as an archive.
TEST(ShippedSkinTest, FolderAndArchiveHoldTheSameSeventeenFiles) {
  SkinReaderFeature feature(SystemFiles());
  for (int32_t number = kSkinBalance; number <= kSkinVolume; ++number) {
    uint32_t size = 0;
    void* block = feature.ReadFromFolder(L"skins\\default", number, &size);
    const std::string bytes = Take(block, size);
    EXPECT_GT(bytes.size(), 60u) << number;
    block = feature.ReadFromArchive(L"skins\\default.zip", number, &size);
    EXPECT_TRUE(Take(block, size) == bytes) << number;
  }
}

TEST_F(SkinFeatureTest, Destroys) {
  feature_.Destroy(0);
  feature_.Destroy(0);
  HeapNew<SkinReaderFeature>(files_)->Destroy(1);  // the leak checker looks
}

}  // namespace
}  // namespace kelvo
