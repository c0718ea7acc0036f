#include "catalog/media/add_entry.h"

#include <gtest/gtest.h>

#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::FakeInformation;
using test::HeapFaults;
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
  EXPECT_TRUE(AddMpegEntry(files_, L"\\a.mp3", &list_));
  EXPECT_TRUE(AddMpegEntry(files_, L"\\plain.mp3", &list_));
  EXPECT_TRUE(AddMpegEntry(files_, L"\\missing.mp3", &list_));
  EXPECT_TRUE(AddOggEntry(information_, L"\\a.ogg", &list_));
  EXPECT_TRUE(AddOggEntry(information_, L"\\broken.ogg", &list_));
  EXPECT_TRUE(AddWmaEntry(information_, L"\\a.wma", &list_));
  information_.wma_available = false;
  EXPECT_FALSE(AddWmaEntry(information_, L"\\a.wma", &list_));
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

TEST_F(AddEntryTest, GrowsByAHundredAndKeepsEverything) {
  for (int i = 0; i < 201; ++i) {
    const test::Wide path("\\" + std::to_string(i) + ".mp3");
    ASSERT_TRUE(list_.Add(path));
    EXPECT_EQ(list_.capacity(), (static_cast<size_t>(i) / 100 + 1) * 100);
  }
  for (int i = 0; i < 201; ++i) {
    EXPECT_EQ(Utf8(list_[static_cast<size_t>(i)].path.c_str()), "\\" + std::to_string(i) + ".mp3");
  }
  list_.Clear();
  EXPECT_EQ(list_.capacity(), 0u);
}

TEST_F(AddEntryTest, SurvivesEveryFailingAllocation) {
  for (long n = 0;; ++n) {
    ASSERT_LT(n, 100);
    SCOPED_TRACE(n);
    list_.Clear();
    bool triggered;
    {
      HeapFaults faults(n);
      AddMpegEntry(files_, L"\\a.mp3", &list_);
      AddOggEntry(information_, L"\\a.ogg", &list_);
      AddWmaEntry(information_, L"\\a.wma", &list_);
      triggered = faults.triggered();
    }
    // Growing or a path copy failed: an entry less. Opening or a block: an entry without block.
    size_t blocks = 0;
    for (const MediaEntry& entry : list_) blocks += entry.tag ? 1 : 0;
    EXPECT_GE(list_.size() + blocks, 4u);
    EXPECT_EQ(list_.size() == 3 && blocks == 3, !triggered);
    ASSERT_TRUE(AddMpegEntry(files_, L"\\a.mp3", &list_)) << "usable afterwards";
    EXPECT_EQ(Utf8(list_.back().path.c_str()), "\\a.mp3");
    if (!triggered) break;
  }
  EXPECT_EQ(files_.open_now, 0);
}

}  // namespace
}  // namespace kelvo
