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
  FailingSource unread(tag, 0), source(tag, -1);
  EXPECT_FALSE(ReadId3v1(unread, &entry)) << "a read that fails";
  EXPECT_EQ(Fields(entry), "new|||Blues");
  const HeapFaults faults(0);
  EXPECT_FALSE(ReadId3v1(source, &entry));
  EXPECT_EQ(Fields(entry), "none") << "no block when memory is out";
}

}  // namespace
}  // namespace kelvo
