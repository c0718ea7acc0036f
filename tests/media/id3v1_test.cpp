#include "catalog/media/id3v1.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::FailingSource;
using test::HeapFaults;
using test::Id3v1Tag;
using test::MemoryFiles;

std::string Fields(const MediaEntry& entry) {
  if (!entry.tag) return "none";
  const TagBlock& tag = *entry.tag;
  return std::string(tag.title) + "|" + tag.artist + "|" + tag.album + "|" + tag.genre;
}

MediaEntry EntryWithOldTag() {
  MediaEntry entry;
  EXPECT_TRUE(entry.path.Assign(L"C:\\a.mp3"));
  entry.tag.Reset(HeapNew<TagBlock>());
  entry.tag->title[0] = 'o';
  return entry;
}

TEST(Id3v1Test, ReadsTheLast128BytesOrNothing) {
  const std::string thirty(30, 'x');
  const std::string tag = Id3v1Tag("T", "A", "L", 17);
  const struct {
    const char* name;
    std::string file;
    const char* want;  // null: no tag, the old one stays
  } kCases[] = {
      {"empty", "", nullptr},
      {"127 bytes", tag.substr(1), nullptr},
      {"127 bytes that begin well", tag.substr(0, 127), nullptr},
      {"exactly a tag", tag, "T|A|L|Rock"},
      {"a byte behind the tag", tag + ".", nullptr},
      {"TAG inside the audio only", "..TAG.." + std::string(200, 'a'), nullptr},
      {"lower case", "tag" + tag.substr(3), nullptr},
      {"blanks", Id3v1Tag("T t", "A ", "", 0, ' '), "T t|A||Blues"},
      {"all blanks", Id3v1Tag("  ", " ", " ", 255, ' '), "|||"},
      {"full fields", Id3v1Tag(thirty, thirty, thirty, 147),
       "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx|xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx|"
       "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx|Synthpop"},
      {"blanks behind a NUL", Id3v1Tag(std::string("a\0 ", 3), " b", "c", 1),
       "a| b|c|Classic Rock"},
      {"text behind a NUL stays hidden", Id3v1Tag(std::string("a\0b", 3), "", "", 2),
       "a|||Country"},
      {"two tags", tag + Id3v1Tag("last", "", "", 4), "last|||Disco"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    MediaEntry entry = EntryWithOldTag();
    FailingSource source(c.file, -1);
    EXPECT_EQ(ReadId3v1(source, &entry), c.want != nullptr);
    EXPECT_EQ(Fields(entry), c.want ? c.want : "o|||");
    for (long n = 0; n < source.reads(); ++n) {
      FailingSource failing(c.file, n);
      MediaEntry kept = EntryWithOldTag();
      EXPECT_FALSE(ReadId3v1(failing, &kept));
      EXPECT_EQ(Fields(kept), "o|||");
    }
  }
}

TEST(Id3v1Test, LeavesTheEntryAloneWhenTheFileCannotBeRead) {
  MemoryFiles files;
  MediaEntry entry = EntryWithOldTag();
  EXPECT_FALSE(ReadId3v1(files, &entry)) << "no file";
  files.Put("c:\\A.MP3", Id3v1Tag("new", "", "", 0)).unreadable = true;
  EXPECT_FALSE(ReadId3v1(files, &entry)) << "unreadable";
  files.PutFolder("C:\\a.mp3");
  EXPECT_FALSE(ReadId3v1(files, &entry)) << "a folder";
  EXPECT_EQ(Fields(entry), "o|||");
  files.Put("C:\\a.mp3", Id3v1Tag("new", "", "", 0));
  EXPECT_TRUE(ReadId3v1(files, &entry));
  EXPECT_EQ(Fields(entry), "new|||Blues");
  EXPECT_EQ(files.last_share, Share::kRead);
  EXPECT_EQ(files.open_now, 0);
  const std::string tag = Id3v1Tag("T", "A", "L", 17);
  FailingSource source(tag, -1);
  const HeapFaults faults(0);
  EXPECT_FALSE(ReadId3v1(source, &entry));
  EXPECT_EQ(Fields(entry), "none") << "no block when memory is out";
}

}  // namespace
}  // namespace kelvo
