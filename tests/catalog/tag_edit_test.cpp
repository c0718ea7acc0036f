#include "catalog/tag_editor/tag_edit.h"

#include <gtest/gtest.h>
#include <string.h>

#include "base/text/wide.h"
#include "catalog/lists/device_lists.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;
using test::MemoryFiles;

class TagFileTest : public testing::Test {
 protected:
  void Put(const std::string& bytes, uint32_t attributes = kAttributeNormal) {
    files_.Put("\\a.mp3", bytes, attributes);
    ASSERT_TRUE(list_.Add(L"\\a.mp3"));
    ReadId3v1(files_, &list_.back());
    edit_.Load(files_, list_.back());
    TagTexts texts = {};
    CopyWide(texts.title, std::size(texts.title), L"New");
    edit_.Build(texts, 8);
    files_.log.clear();
  }
  bool Write() { return edit_.Write(files_, L"\\a.mp3"); }

  MemoryFiles files_;
  EntryList list_;
  TagEdit edit_;
};

TEST_F(TagFileTest, RefusesAFileThatShrankOrVanishedMeanwhile) {
  Put("audio" + Id3v1Tag("Old", "", "", 1));
  files_.Find("\\a.mp3")->bytes = "short";
  EXPECT_FALSE(Write());
  EXPECT_EQ(files_.Find("\\a.mp3")->bytes, "short");
  ASSERT_TRUE(files_.Delete(L"\\a.mp3"));
  EXPECT_FALSE(Write());
}

TEST_F(TagFileTest, KeepsAttributesUnlessTheFileCannotBeOpened) {
  const uint32_t guarded = kAttributeReadOnly | kAttributeHidden;
  files_.before = [](MemoryFiles& files, const std::string& call) {
    if (call.find("attributes") != std::string::npos) {
      EXPECT_EQ(files.open_now, 0) << call;
    }
  };
  // attributes, set to normal, open, seek, write, restore: what each fault leaves behind.
  const uint32_t want[] = {guarded, guarded,          kAttributeNormal, guarded,
                           guarded, kAttributeNormal, guarded};
  test::Sweep([&](long n) {
    list_.Clear();
    Put("audio", guarded);
    files_.FailAfter(n);
    EXPECT_EQ(Write(), n >= 5);
    const bool failed = files_.fault_triggered();
    EXPECT_EQ(failed, n < 6);
    files_.FailAfter(-1);
    EXPECT_EQ(files_.Find("\\a.mp3")->attributes, want[n]);
    EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), n >= 5 ? 133u : 5u);
    return failed && n < 6;
  });
  EXPECT_EQ(files_.open_now, 0);
  EXPECT_EQ(files_.last_share, Share::kWrite);
}

TEST(CopyTag, ReachesEveryEntryOfTheFile) {
  EntryList media, playlist;
  ASSERT_TRUE(media.Add(L"\\É.mp3"));
  for (const wchar_t* path : {L"\\é.MP3", L"\\b.mp3", L"\\é.mp3"}) ASSERT_TRUE(playlist.Add(path));
  CopyTagToPlaylist(media[0], playlist);
  EXPECT_FALSE(playlist[0].tag);
  media[0].tag.Reset(HeapNew<TagBlock>());
  playlist[2].tag.Reset(HeapNew<TagBlock>());
  strcpy(media[0].tag->title, "New");
  {
    HeapFaults faults(0);
    CopyTagToPlaylist(media[0], playlist);
    EXPECT_FALSE(playlist[0].tag);
  }
  EXPECT_STREQ(playlist[2].tag->title, "New");
  CopyTagToPlaylist(media[0], playlist);
  EXPECT_STREQ(playlist[0].tag->title, "New");
  EXPECT_FALSE(playlist[1].tag);
}

}  // namespace
}  // namespace kelvo
