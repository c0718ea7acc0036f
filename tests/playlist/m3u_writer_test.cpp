#include "playlist/playlist_files.h"

#include "tests/playlist/playlist_fixture.h"
#include "tests/support/id3v1_tag.h"

namespace kelvo {
namespace {

using test::Wide;

class M3uWriterTest : public test::PlaylistFixture {
 protected:
  void Entry(const std::string& path, const char* artist = nullptr, const char* title = nullptr) {
    MediaEntry* entry = list_.Add(Wide(path));
    ASSERT_TRUE(entry);
    if (!artist) return;
    entry->tag.Reset(HeapNew<TagBlock>());
    snprintf(entry->tag->artist, kTagFieldBytes, "%s", artist);
    snprintf(entry->tag->title, kTagFieldBytes, "%s", title);
  }
  std::string Written() {
    EXPECT_TRUE(WriteM3u(files_, L"\\out.m3u", list_));
    EXPECT_EQ(files_.open_now, 0);
    return files_.Find("\\out.m3u")->bytes;
  }
};

TEST_F(M3uWriterTest, WritesGoldenBytes) {
  files_.Put("\\out.m3u", std::string(500, 'x'));
  EXPECT_EQ(Written(), "#EXTM3U:\r\n");
  const std::string thirty(30, 'f');
  Entry("\\m\\Song.mp3", "Artist", "Title");
  Entry("\\m\\plain.mp3");
  Entry("\\m\\empty.ogg", "", "");
  Entry("\\\u00E9\u4E2D.wma", thirty.c_str(), thirty.c_str());
  Entry("\\" + std::string(258, 'p'));
  EXPECT_EQ(Written(),
            "#EXTM3U:\r\n"
            "#EXTINF:-1,Artist - Title\r\n"
            "\\m\\Song.mp3\r\n"
            "\\m\\plain.mp3\r\n"
            "#EXTINF:-1, - \r\n"
            "\\m\\empty.ogg\r\n"
            "#EXTINF:-1," +
                thirty + " - " + thirty +
                "\r\n"
                "\\\xE9?.wma\r\n"
                "\\" +
                std::string(254, 'p') + "\r\n");
}

TEST_F(M3uWriterTest, FailsWhenNoFileCanBeCreatedAndNeverLosesTheOldOne) {
  Entry("\\a.mp3", "A", "T");
  Entry("\\b.mp3");
  files_.Put("\\out.m3u", "old", kAttributeReadOnly);
  EXPECT_FALSE(WriteM3u(files_, L"\\out.m3u", list_));
  EXPECT_FALSE(WriteM3u(files_, L"\\none\\out.m3u", list_));
  files_.Put("\\out.m3u", "old");
  int created = 0;
  const long calls = test::Sweep([&](long n) {
    bool complete = false;
    files_.FailAfter(n, true);
    created += WriteM3u(files_, L"\\out.m3u", list_, &complete);
    EXPECT_EQ(complete, !files_.fault_triggered());
    EXPECT_EQ(files_.Find("\\out.m3u")->bytes == "old", !complete);
    return !complete;
  });
  EXPECT_EQ(calls, 9) << "attributes, create, four lines, flush, two moves";
  EXPECT_EQ(created, 8) << "what comes after the creation does not decide";
  EXPECT_EQ(files_.Find("\\out.m3u")->bytes,
            "#EXTM3U:\r\n#EXTINF:-1,A - T\r\n\\a.mp3\r\n\\b.mp3\r\n");
  EXPECT_EQ(files_.open_now, 0);
}

TEST_F(M3uWriterTest, ReadsBackWhatItWrote) {
  std::string want;
  for (const char* path : {"\\m\\a.mp3", "\\m\\\u00E9 - \u20AC.mp3", "\\m\\#1.mp3", "\\a b\\c.mp2",
                           "C:\\x.mp1", "\\m\\a.mp3"}) {
    files_.Put(path, test::Id3v1Tag("T", "A", "", 0));
    AddPath({files_, information_, nullptr}, Wide(path), &list_);
    want += std::string(path) + " ";
  }
  ASSERT_EQ(Paths(), want);
  const std::string bytes = Written();
  EXPECT_EQ(Added("\\out.m3u"), want);
  EXPECT_EQ(Written(), bytes);
}

}  // namespace
}  // namespace kelvo
