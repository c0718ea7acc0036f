// The skin that the host comes with, read as the host reads it: out of the folder and the archive
// that the build draws beside the programs.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>

#include "skins/skin_feature.h"

namespace kelvo {
namespace {

// Little endian; 0 beyond the end.
uint32_t Word(const std::string& bytes, size_t offset) {
  uint32_t value = 0;
  for (size_t i = 0; i < 4 && offset + i < bytes.size(); ++i) {
    value |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[offset + i])) << 8 * i;
  }
  return value;
}

std::string Take(void* block, uint32_t size) {
  const std::string bytes(block ? static_cast<char*>(block) : "", block ? size : 0);
  free(block);
  return bytes;
}

std::string Folder(int32_t number) {
  SkinReaderFeature feature(SystemFiles());
  uint32_t size = 0;
  void* block = feature.ReadFromFolder(L"skins\\default", number, &size);
  return Take(block, size);
}

std::string Archive(int32_t number) {
  SkinReaderFeature feature(SystemFiles());
  uint32_t size = 0;
  void* block = feature.ReadFromArchive(L"skins\\default.zip", number, &size);
  return Take(block, size);
}

TEST(ShippedSkinTest, FolderAndArchiveHoldTheSeventeenFiles) {
  for (int32_t number = kSkinBalance; number <= kSkinVolume; ++number) {
    SCOPED_TRACE(number);
    const std::string bytes = Folder(number);
    EXPECT_FALSE(bytes.empty());
    EXPECT_EQ(bytes, Archive(number));
  }
}

TEST(ShippedSkinTest, SheetsHaveTheirSizes) {
  const struct {
    int32_t number;
    uint32_t width, height;
  } cases[] = {
      {kSkinBalance, 68, 433},    {kSkinButtons, 136, 36},     {kSkinEqualizerEx, 275, 82},
      {kSkinEqualizer, 275, 315}, {kSkinMain, 275, 116},       {kSkinMonoStereo, 58, 24},
      {kSkinNumbers, 99, 13},     {kSkinNumbersEx, 108, 13},   {kSkinPlayPause, 42, 9},
      {kSkinPlaylist, 280, 186},  {kSkinPositionBar, 307, 10}, {kSkinShuffleRepeat, 92, 85},
      {kSkinText, 155, 18},       {kSkinTitleBar, 344, 87},    {kSkinVolume, 68, 433},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.number);
    const std::string bytes = Folder(c.number);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(Word(bytes, 2), bytes.size());
    EXPECT_EQ(Word(bytes, 10), 54u) << "pixels follow the headers";
    EXPECT_EQ(Word(bytes, 14), 40u);
    EXPECT_EQ(Word(bytes, 18), c.width);
    EXPECT_EQ(Word(bytes, 22), c.height);
    EXPECT_EQ(Word(bytes, 26), 1u | 24u << 16) << "one plane, 24 bits";
    EXPECT_EQ(Word(bytes, 30), 0u) << "not compressed";
    EXPECT_EQ(bytes.size(), 54 + (c.width * 3 + 3) / 4 * 4 * c.height);
  }
}

}  // namespace
}  // namespace kelvo
