#include "catalog/tag_editor/tag_edit.h"

#include <gtest/gtest.h>
#include <string.h>

#include "base/text/wide.h"
#include "tests/support/heap_faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;
using test::MemoryFiles;
using test::Utf8;
using test::Wide;

TagTexts Texts(const std::string& title, const std::string& track, const std::string& comment) {
  TagTexts texts;
  CopyWide(texts.title, 31, Wide(title));
  CopyWide(texts.artist, 31, L"Art");
  CopyWide(texts.album, 31, L"Alb");
  CopyWide(texts.year, 5, L"1999");
  CopyWide(texts.track, 12, Wide(track));
  CopyWide(texts.comment, 31, Wide(comment));
  return texts;
}

TEST(TagEdit, BuildsBothForms) {
  const std::string thirty = "abcdefghijklmnopqrstuvwxyz1234";
  const struct {
    const char* name;
    std::string title, track, comment;
    uint32_t genre;
    std::string want_comment;  // bytes 97 to 126
    char want_genre;
  } cases[] = {
      {"with a track", "T", "7", thirty, 8, thirty.substr(0, 28) + std::string("\0\7", 2), 8},
      {"without", "T", "", thirty, 147, thirty, static_cast<char>(147)},
      {"a shorter comment", "T", "", thirty.substr(0, 29), 0, thirty.substr(0, 29) + '\0', 0},
      {"track cut to two", "T", "300", "c", 0, "c" + std::string(28, 0) + "\x1E", 0},
      {"track 0 is a track", "T", "0", thirty, 0, thirty.substr(0, 28) + std::string(2, 0), 0},
      {"no genre", thirty, "", "", 0xFFFFFFFF, std::string(30, 0), static_cast<char>(255)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TagEdit edit;
    edit.Build(Texts(c.title, c.track, c.comment), c.genre);
    const std::string bytes(reinterpret_cast<const char*>(edit.bytes()), kId3v1Bytes);
    std::string title = c.title;
    title.resize(30);
    EXPECT_EQ(bytes.substr(3, 30), title);
    EXPECT_EQ(bytes.substr(33, 4), std::string("Art\0", 4));
    EXPECT_EQ(bytes.substr(63, 4), std::string("Alb\0", 4));
    EXPECT_EQ(bytes.substr(93, 4), "1999");
    EXPECT_EQ(bytes.substr(97, 30), c.want_comment);
    EXPECT_EQ(bytes[127], c.want_genre);
  }
}

class TagFileTest : public testing::Test {
 protected:
  void Put(const std::string& bytes, uint32_t attributes = kAttributeNormal) {
    files_.Put("\\a.mp3", bytes, attributes);
    ASSERT_TRUE(list_.Add(L"\\a.mp3"));
    ReadId3v1(files_, &list_.back());
    edit_.Load(files_, list_.back());
    edit_.Build(Texts("New", "3", "com"), 8);
    files_.log.clear();
  }
  bool Write() { return edit_.Write(files_, L"\\a.mp3"); }

  MemoryFiles files_;
  EntryList list_;
  TagEdit edit_;
};

TEST_F(TagFileTest, ShowsWhatTheFileHolds) {
  std::string tag = Id3v1Tag("Title \xE9", "Art ", "Alb", 17, ' ');
  tag.replace(97, 30, "comment" + std::string(21, ' ') + std::string("\0\xC8", 2));
  Put("audio" + tag);
  TagEdit edit;
  edit.Load(files_, list_[0]);
  TagTexts shown;
  edit.Show(&shown);
  EXPECT_TRUE(edit.present());
  EXPECT_EQ(edit.genre(), 17);
  EXPECT_EQ(Utf8(shown.title), "Title \u00E9");
  EXPECT_EQ(Utf8(shown.artist), "Art");
  EXPECT_EQ(Utf8(shown.comment), "comment");
  EXPECT_EQ(Utf8(shown.year), "1999");
  EXPECT_EQ(Utf8(shown.track), "200");

  tag.replace(97, 30, std::string(30, 'c'));  // the older form: no track
  files_.Put("\\a.mp3", tag);
  edit.Load(files_, list_[0]);
  edit.Show(&shown);
  EXPECT_EQ(Utf8(shown.comment), std::string(29, 'c'));
  EXPECT_EQ(Utf8(shown.track), "");

  list_[0].tag.Reset();  // the catalog saw no tag
  edit.Load(files_, list_[0]);
  edit.Show(&shown);
  EXPECT_FALSE(edit.present());
  EXPECT_EQ(Utf8(shown.title), "");
}

TEST_F(TagFileTest, ReplacesAnOldTagAndAppendsANewOne) {
  Put("audio" + Id3v1Tag("Old", "", "", 1));
  EXPECT_TRUE(Write());
  const std::string& bytes = files_.Find("\\a.mp3")->bytes;
  EXPECT_EQ(bytes.size(), 5u + 128);
  EXPECT_EQ(bytes.substr(0, 11), "audioTAGNew");

  Put("audio");
  EXPECT_TRUE(Write());
  EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), 5u + 128);
  list_.Clear();
  Put(files_.Find("\\a.mp3")->bytes);
  EXPECT_TRUE(Write());
  EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), 5u + 128);
}

TEST_F(TagFileTest, KeepsAttributesUnlessTheFileCannotBeOpened) {
  const uint32_t guarded = kAttributeReadOnly | kAttributeHidden;
  Put("audio", guarded);
  EXPECT_TRUE(Write());
  EXPECT_EQ(files_.Find("\\a.mp3")->attributes, guarded);
  // attributes, set to normal, open, seek, write, restore: what each fault leaves behind.
  const uint32_t want[] = {guarded, guarded, kAttributeNormal, guarded, guarded, kAttributeNormal};
  for (long n = 0; n < 6; ++n) {
    list_.Clear();
    Put("audio", guarded);
    files_.FailAfter(n);
    EXPECT_EQ(Write(), n == 5) << n;
    EXPECT_TRUE(files_.fault_triggered());
    files_.FailAfter(-1);
    EXPECT_EQ(files_.Find("\\a.mp3")->attributes, want[n]) << n;
    EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), n == 5 ? 133u : 5u);
    EXPECT_EQ(files_.open_now, 0);
  }
}

TEST_F(TagFileTest, FailsOnFilesThatVanishedOrShrank) {
  Put("audio" + Id3v1Tag("Old", "", "", 1));
  files_.Find("\\a.mp3")->bytes = "short";
  EXPECT_FALSE(Write());
  EXPECT_EQ(files_.Find("\\a.mp3")->bytes, "short");
  ASSERT_TRUE(files_.Delete(L"\\a.mp3"));
  EXPECT_FALSE(Write());
}

TEST(CopyTag, ReachesEveryEntryOfTheFile) {
  EntryList media, playlist;
  ASSERT_TRUE(media.Add(L"\\A.mp3"));
  for (const wchar_t* path : {L"\\a.MP3", L"\\b.mp3", L"\\a.mp3"}) ASSERT_TRUE(playlist.Add(path));
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
