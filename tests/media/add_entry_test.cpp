#include "catalog/media/add_entry.h"

#include <gtest/gtest.h>
#include <string.h>

#include "tests/support/fake_information.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::FakeInformation;
using test::Id3v1Tag;
using test::MemoryFiles;
using test::Utf8;

class AddEntryTest : public testing::Test {
 protected:
  AddEntryTest() {
    files_.Put("\\a.mp3", Id3v1Tag("T", "A", "L", 8));
    files_.Put("\\plain.mp3", "audio");
    information_.known["\\a.ogg"] = {"Ogg title", "Ogg artist", "Ogg album", "Ogg genre"};
    information_.known["\\a.wma"] = {std::string(40, 't'), "\u20AC", "\u4E2D", "G"};
  }

  bool Add(MediaKind kind, const wchar_t* path) {
    return AddMediaEntry(kind, files_, information_, path, &list_);
  }
  // One entry a line.
  std::string Shown() const {
    std::string all;
    for (const MediaEntry& entry : list_) {
      all += Utf8(entry.path.c_str()) + ":";
      if (entry.tag) {
        const TagBlock& tag = *entry.tag;
        all += std::string(tag.title) + "|" + tag.artist + "|" + tag.album + "|" + tag.genre;
      }
      all += "\n";
      EXPECT_EQ(entry.item, 0u);
    }
    return all;
  }

  MemoryFiles files_;
  FakeInformation information_;
  EntryList list_;
};

TEST_F(AddEntryTest, AddsWhatItCanReadAndTheRestWithoutTag) {
  EXPECT_TRUE(Add(MediaKind::kMpeg, L"\\a.mp3"));
  EXPECT_TRUE(Add(MediaKind::kMpeg, L"\\plain.mp3"));
  EXPECT_TRUE(Add(MediaKind::kMpeg, L"\\missing.mp3"));
  EXPECT_TRUE(Add(MediaKind::kOgg, L"\\a.ogg"));
  EXPECT_TRUE(Add(MediaKind::kOgg, L"\\broken.ogg"));
  EXPECT_TRUE(Add(MediaKind::kWma, L"\\a.wma"));
  for (const MediaKind kind :
       {MediaKind::kNone, MediaKind::kM3u, MediaKind::kPls, MediaKind::kAsx}) {
    EXPECT_FALSE(Add(kind, L"\\a.mp3"));
  }
  information_.wma_available = false;
  EXPECT_FALSE(Add(MediaKind::kWma, L"\\a.wma"));
  EXPECT_EQ(Shown(),
            "\\a.mp3:T|A|L|Jazz\n"
            "\\plain.mp3:\n"
            "\\missing.mp3:\n"
            "\\a.ogg:Ogg title|Ogg artist|Ogg album|Ogg genre\n"
            "\\broken.ogg:|||\n"
            "\\a.wma:" +
                std::string(29, 't') + "|\x80|?|G\n");
  EXPECT_EQ(information_.asked, "ogg \\a.ogg;ogg \\broken.ogg;wma \\a.wma;");
}

// A plug-in as the hosts see it; it fills in what the arguments' order says.
struct FakePlugin {
  int32_t result;
  const wchar_t* asked = nullptr;
  int32_t GetFileInfo(const wchar_t* path, wchar_t* display_text, wchar_t* album, MediaInfo* info,
                      uint32_t* length_ms, uint32_t* number, wchar_t* artist, wchar_t* title) {
    asked = path;
    EXPECT_EQ(display_text, nullptr);
    EXPECT_EQ(length_ms, nullptr);
    EXPECT_NE(number, nullptr);
    CopyWide(album, kTextCapacity, L"album");
    CopyWide(artist, kTextCapacity, L"artist");
    CopyWide(title, kTextCapacity, L"title");
    info->track = 7;
    return result;
  }
};

TEST(QueryPluginTest, AsksForTheTextsInTheirOrder) {
  for (const int32_t result : {0, 1, -1}) {
    FakePlugin plugin = {result};
    MediaTexts texts;
    EXPECT_EQ(QueryPlugin(plugin, L"\\p", &texts), result != 0);
    EXPECT_EQ(Utf8(plugin.asked), "\\p");
    EXPECT_EQ(Utf8(texts.title) + "," + Utf8(texts.artist) + "," + Utf8(texts.album),
              "title,artist,album");
    EXPECT_EQ(texts.format.track, 7);
  }
}

// As hosts read it: three words an entry, the second of which is a block's address.
TEST(EntryListTest, GrowsByAHundredEntriesOfThreeWords) {
  EntryList list;
  for (int i = 0; i < 201; ++i) {
    ASSERT_TRUE(list.Add(test::Wide(std::to_string(i))));
    EXPECT_EQ(list.capacity(), (static_cast<size_t>(i) / 100 + 1) * 100);
  }
  list[200].tag.Reset(HeapNew<TagBlock>());
  strcpy(list[200].tag->genre, "G");
  list[200].item = 0x1234;
  const uintptr_t* words = reinterpret_cast<const uintptr_t*>(list.begin());
  for (size_t i = 0; i < 201; ++i) {
    EXPECT_EQ(Utf8(reinterpret_cast<const wchar_t*>(words[3 * i])), std::to_string(i));
  }
  EXPECT_STREQ(reinterpret_cast<const char*>(words[601]) + 93, "G");
  EXPECT_EQ(words[602], 0x1234u);
  EXPECT_EQ(words[598], 0u) << "no block";
  list.Clear();
  EXPECT_EQ(list.capacity(), 0u);
}

}  // namespace
}  // namespace kelvo
