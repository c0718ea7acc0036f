#include "catalog/tag_editor/tag_edit.h"

#include <gtest/gtest.h>
#include <string.h>

#include "base/text/wide.h"
#include "catalog/lists/device_lists.h"
#include "tests/support/faults.h"
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

constexpr char kThirty[] = "abcdefghijklmnopqrstuvwxyz1234";

TagTexts Texts(const std::string& title, const std::string& track, const std::string& comment) {
  TagTexts texts;
  CopyWide(texts.title, std::size(texts.title), Wide(title));
  CopyWide(texts.artist, std::size(texts.artist), Wide(kThirty));
  CopyWide(texts.album, std::size(texts.album), Wide(kThirty));
  CopyWide(texts.year, std::size(texts.year), L"1999");
  CopyWide(texts.track, std::size(texts.track), Wide(track));
  CopyWide(texts.comment, std::size(texts.comment), Wide(comment));
  return texts;
}

TEST(TagEdit, BuildsBothForms) {
  const std::string thirty = kThirty;
  const struct {
    const char *name, *track;
    std::string comment;
    uint32_t genre;
    std::string want;  // from the comment on
  } cases[] = {
      {"with a track", "7", thirty, 8, thirty.substr(0, 28) + std::string("\0\7\x8", 3)},
      {"without", "", thirty, 147, thirty + "\x93"},
      {"a shorter comment", "", thirty.substr(0, 29), 0, thirty.substr(0, 29) + std::string(2, 0)},
      {"track cut to two", "300", "c", 0, "c" + std::string(28, 0) + std::string("\x1E", 2)},
      {"track 0 is a track", "0", thirty, 0, thirty.substr(0, 28) + std::string(3, 0)},
      {"no genre", "", "", 0xFFFFFFFF, std::string(30, 0) + "\xFF"},
  };
  TagEdit edit;  // of what was built before nothing stays
  for (const auto& c : cases) {
    edit.Build(Texts(thirty, c.track, c.comment), c.genre);
    const std::string bytes(reinterpret_cast<const char*>(edit.bytes()), kId3v1Bytes);
    EXPECT_EQ(bytes.substr(3), Id3v1Tag(thirty, thirty, thirty, 0).substr(3, 94) + c.want)
        << c.name;
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

std::string Tag(const std::string& year, const std::string& comment, const std::string& end) {
  std::string tag = Id3v1Tag("Title \xE9", "Art ", "Alb", 17, ' ').replace(93, 4, year);
  return tag.replace(97, 30, (comment + std::string(30, ' ')).substr(0, 30 - end.size()) + end);
}

TEST_F(TagFileTest, ShowsWhatTheFileHolds) {
  const std::string c29(29, 'c');
  const struct {
    const char* name;
    std::string tag, year, comment, track;
    bool present;
  } cases[] = {
      {"with a track", Tag("1999", "comment", {"\0\xC8", 2}), "1999", "comment", "200", true},
      {"a full comment", Tag("1999", c29.substr(1), {"\0\5", 2}), "1999", c29.substr(1), "5", true},
      {"blanks at the end", Tag("99  ", " c ", {"\0\1", 2}), "99", " c", "1", true},
      {"track 0 is none", Tag("1999", "c", {"\0\0", 2}), "1999", "c", "", true},
      {"the older form", Tag("1999", c29 + "\7", ""), "1999", c29, "", true},
      {"no tag", "TAK" + Tag("1999", "c", "").substr(3), "", "", "", false},
      {"too short", Tag("1999", "c", "").substr(1), "", "", "", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    list_.Clear();
    Put("audio");
    list_[0].tag.Reset(HeapNew<TagBlock>());  // the catalog saw one
    files_.Put("\\a.mp3", c.tag);
    TagEdit edit;
    edit.Load(files_, list_[0]);
    EXPECT_EQ(files_.last_share, Share::kRead);
    TagTexts shown;
    edit.Show(&shown);
    EXPECT_EQ(edit.present(), c.present);
    EXPECT_EQ(edit.genre(), c.present ? 17 : 0);
    EXPECT_EQ(Utf8(shown.title) + "|" + Utf8(shown.artist) + "|" + Utf8(shown.album),
              c.present ? "Title \u00E9|Art|Alb" : "||");
    EXPECT_EQ(Utf8(shown.year) + "|" + Utf8(shown.comment) + "|" + Utf8(shown.track),
              std::string(c.year) + "|" + c.comment + "|" + c.track);
    // An update replaces what was seen, and only that.
    EXPECT_TRUE(edit.Write(files_, L"\\a.mp3"));
    EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), c.tag.size() + (c.present ? 0 : 128));

    list_[0].tag.Reset();  // the catalog saw none
    edit.Load(files_, list_[0]);
    edit.Show(&shown);
    EXPECT_FALSE(edit.present());
    EXPECT_EQ(Utf8(shown.title) + Utf8(shown.comment), "");
  }
}

TEST_F(TagFileTest, ReplacesAnOldTagAndAppendsANewOne) {
  for (const std::string& old : {Id3v1Tag("Old", "", "", 1), std::string()}) {
    list_.Clear();
    Put("audio" + old);
    EXPECT_TRUE(Write());
    EXPECT_EQ(files_.Find("\\a.mp3")->bytes.size(), 5u + 128);
    EXPECT_EQ(files_.Find("\\a.mp3")->bytes.substr(0, 11), "audioTAGNew");
  }
  // One that shrank or vanished meanwhile.
  list_.Clear();
  Put(files_.Find("\\a.mp3")->bytes);
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
