#include <sstream>

#include "tests/playlist/playlist_fixture.h"
#include "tests/support/code_page.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;

// Whether `part` is `whole` with some of its words left out.
bool IsPartInOrder(const std::string& part, const std::string& whole) {
  std::istringstream words(part), all(whole);
  std::string word, candidate;
  while (words >> word) {
    do {
      if (!(all >> candidate)) return false;
    } while (candidate != word);
  }
  return true;
}

class AddPathTest : public test::PlaylistFixture {
 protected:
  AddPathTest() {
    files_.Put("\\m\\a.mp3", Id3v1Tag("T", "A", "L", 8));
    files_.Put("\\m\\b.ogg", "ogg");
    files_.Put("\\m\\c.wma", "wma");
    files_.PutFolder("\\m\\folder.mp3");
    files_.PutFolder("\\m\\folder.m3u");
    information_.known["\\m\\b.ogg"] = {"Ogg", "", "", ""};
  }
};

TEST_F(AddPathTest, AddsMediaThatExists) {
  const struct {
    const char* path;
    const char* want;
  } kCases[] = {
      {"\\m\\a.mp3", "\\m\\a.mp3 "},
      {"\\M\\A.MP3", "\\M\\A.MP3 "},
      {"\\m\\b.ogg", "\\m\\b.ogg "},
      {"\\m\\c.wma", "\\m\\c.wma "},
      {"\\m\\folder.mp3", "\\m\\folder.mp3 "},
      {"\\m\\folder.m3u", ""},
      {"\\m\\x.mp3", ""},
      {"\\m\\x.ogg", ""},
      {"\\m\\x.m3u", ""},
      {"\\m\\a.txt", ""},
      {"", ""},
  };
  for (const auto& c : kCases) EXPECT_EQ(Added(c.path), c.want) << c.path;
  Added("\\m\\a.mp3");
  EXPECT_STREQ(list_[0].tag->title, "T");
  EXPECT_EQ(files_.last_share, Share::kRead);
  Added("\\m\\b.ogg");
  EXPECT_STREQ(list_[0].tag->title, "Ogg");
  Added("\\m\\folder.mp3");
  EXPECT_FALSE(list_[0].tag);
  information_.wma_available = false;
  information_.asked.clear();
  EXPECT_EQ(Added("\\m\\c.wma") + Added("\\m\\x.ogg"), "");
  EXPECT_EQ(information_.asked, "") << "a file that is not there is not asked about";
}

TEST_F(AddPathTest, ExpandsListsInPlace) {
  files_.Put("\\m\\inner.pls", "[playlist]\r\nFile1=\\m\\b.ogg\r\nFile2=\\n\\last.asx\r\n");
  files_.Put("\\n\\last.asx", "<asx>\n<ref href=\"\\m\\c.wma\"/>\n<ref href=\"d.mp3\"/>\n</asx>");
  files_.Put("\\n\\d.mp3", "");
  files_.Put("\\m\\outer.m3u",
             "#EXTM3U\r\na.mp3\r\n\r\ninner.pls\r\nmissing.mp3\r\nmissing.m3u\r\nfolder.m3u\r\n"
             "A.mp3\r\nnote.txt\r\nb.ogg");
  EXPECT_EQ(Added("\\m\\outer.m3u"),
            "\\m\\a.mp3 \\m\\b.ogg \\m\\c.wma \\n\\d.mp3 \\m\\A.mp3 \\m\\b.ogg ");
  list_.Clear();
  files_.Put("\\m\\odd.txt", "File1=\\m\\a.mp3\nb.ogg\n<ref href=\"c.wma\"\n");
  const PlaylistSources sources = {files_, information_, nullptr};
  ReadPls(sources, L"\\m\\odd.txt", &list_);
  ReadM3u(sources, L"\\m\\odd.txt", &list_);
  ReadAsx(sources, L"\\m\\odd.txt", &list_);
  EXPECT_EQ(Paths(), "\\m\\a.mp3 \\m\\b.ogg \\m\\c.wma ");
}

TEST_F(AddPathTest, OpensListsByTheirNameInTheCodePage) {
  const test::CodePage code_page(1252);
  files_.Put("\\\u00E9\\x.m3u", "\\m\\a.mp3");
  files_.Put("\\\u4E2D.m3u", "\\m\\a.mp3");
  files_.Put("\\?.m3u", "\\m\\a.mp3");
  EXPECT_EQ(Added("\\\u00E9\\x.m3u"), "\\m\\a.mp3 ");
  EXPECT_EQ(Added("\\\u4E2D.m3u"), "");
  files_.Put("\\m\\nothing.m3u", "");
  EXPECT_EQ(Added("\\m\\nothing.m3u"), "");
  EXPECT_EQ(files_.last_share, Share::kReadWrite) << "others may be writing it";
  files_.Put("\\m\\unreadable.m3u", "\\m\\a.mp3").unreadable = true;
  EXPECT_EQ(Added("\\m\\unreadable.m3u"), "");
  const test::CodePage utf8(kUtf8CodePage);
  files_.Put("\\\u4E2D\\\u8868.mp3", "");
  files_.Put("\\\u4E2D\\x.m3u", "\u8868.mp3\n");
  EXPECT_EQ(Added("\\\u4E2D\\x.m3u"), "\\\u4E2D\\\u8868.mp3 ");
}

TEST_F(AddPathTest, SkipsWhatIsTooLongAndGoesOn) {
  files_.Put("\\m\\x.m3u", std::string(600, 'n') + ".mp3\n" + std::string(1000000, 'm') +
                               "\na.mp3\r" + "\na.mp3\n");
  EXPECT_EQ(Added("\\m\\x.m3u"), "\\m\\a.mp3 \\m\\a.mp3 ");
  std::string numbered;
  for (int i = 0; i < 100000; ++i) numbered += "File1=\\m\\a.mp3\r\n";
  files_.Put("\\m\\x.pls", numbered + "File2=\\m\\b.ogg");
  EXPECT_EQ(Added("\\m\\x.pls"), "\\m\\a.mp3 \\m\\b.ogg ");
}

TEST_F(AddPathTest, SurvivesEveryFault) {
  files_.Put("\\m\\inner.pls", "File1=\\m\\b.ogg\nFile2=\\m\\a.mp3\n");
  files_.Put("\\m\\outer.m3u", "a.mp3\ninner.pls\nc.wma\n");
  const std::string whole = "\\m\\a.mp3 \\m\\b.ogg \\m\\a.mp3 \\m\\c.wma ";
  ASSERT_EQ(Added("\\m\\outer.m3u"), whole);
  for (const HeapFaults::Mode mode : {HeapFaults::Mode::kOnce, HeapFaults::Mode::kFromThenOn}) {
    for (long n = 0;; ++n) {
      ASSERT_LT(n, 200);
      SCOPED_TRACE(n);
      std::string paths;
      bool triggered;
      {
        HeapFaults faults(n, mode);
        paths = Added("\\m\\outer.m3u");
        triggered = faults.triggered();
      }
      EXPECT_TRUE(IsPartInOrder(paths, whole)) << paths;
      EXPECT_EQ(Added("\\m\\c.wma"), "\\m\\c.wma ") << "usable afterwards";
      if (triggered) continue;
      EXPECT_EQ(paths, whole);
      EXPECT_GT(n, 10);
      break;
    }
  }
  for (const bool from_then_on : {false, true}) {
    for (long n = 0;; ++n) {
      ASSERT_LT(n, 200);
      SCOPED_TRACE(n);
      files_.FailAfter(n, from_then_on);
      const std::string paths = Added("\\m\\outer.m3u");
      const bool triggered = files_.fault_triggered();
      files_.FailAfter(-1);
      if (!triggered) {
        EXPECT_EQ(paths, whole);
        break;
      }
      EXPECT_TRUE(IsPartInOrder(paths, whole)) << paths;
    }
  }
}

TEST_F(AddPathTest, ToleratesFilesThatVanish) {
  files_.Put("\\m\\outer.m3u", "inner.m3u\na.mp3\n");
  files_.Put("\\m\\inner.m3u", "b.ogg\n");
  files_.before = [](test::MemoryFiles& files, const std::string& call) {
    if (call == "attributes \\m\\b.ogg") files.Delete(test::Wide("\\m\\outer.m3u"));
    if (call == "open \\m\\a.mp3") files.Delete(test::Wide("\\m\\a.mp3"));
  };
  EXPECT_EQ(Added("\\m\\outer.m3u"), "\\m\\b.ogg \\m\\a.mp3 ") << "an open list is read to its end";
  EXPECT_FALSE(list_[1].tag) << "the file went between the two looks at it";
}

}  // namespace
}  // namespace kelvo
