#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "playlist/playlist_files.h"
#include "tests/support/code_page.h"
#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;
using test::Utf8;
using test::Wide;

std::string Name(int i) {
  return "\\" + std::to_string(i) + ".m3u";
}

class AddPathTest : public testing::Test {
 protected:
  AddPathTest() {
    files_.Put("\\m\\a.mp3", Id3v1Tag("T", "A", "L", 8));
    files_.Put("\\m\\b.ogg", "ogg");
    files_.Put("\\m\\c.wma", "wma");
    files_.PutFolder("\\m\\folder.mp3");
    files_.PutFolder("\\m\\folder.m3u");
    information_.known["\\m\\b.ogg"] = {"Ogg", "", "", ""};
    files_.Put("\\x.mp3", "");
  }
  // Lists 0 to depth - 1, each with the next one between two entries.
  void PutChain(int depth) {
    for (int i = 0; i < depth; ++i) {
      files_.Put(Name(i), "\\x.mp3\n" + (i + 1 < depth ? Name(i + 1) : "") + "\n\\x.mp3\n");
    }
  }
  size_t Opened(const std::string& path) {
    return static_cast<size_t>(std::count(files_.log.begin(), files_.log.end(), "open " + path));
  }
  // Paths of the list's entries, each followed by a blank; every one is flagged.
  std::string Paths() const {
    std::string all;
    for (const MediaEntry& entry : list_) {
      all += Utf8(entry.path.c_str()) + " ";
      EXPECT_EQ(entry.item, kEntryFlag);
    }
    return all;
  }
  std::string Added(const std::string& path, NestingGuard* guard = nullptr) {
    list_.Clear();
    AddPath({files_, information_, guard}, Wide(path), &list_);
    EXPECT_EQ(files_.open_now, 0);
    return Paths();
  }

  test::MemoryFiles files_;
  test::FakeInformation information_;
  EntryList list_;
};

TEST_F(AddPathTest, AFolderIsNoListAndNothingIsAskedAboutWhatIsNotThere) {
  EXPECT_EQ(Added("\\m\\folder.m3u"), "");
  EXPECT_EQ(Added("\\m\\folder.mp3"), "\\m\\folder.mp3 ");
  EXPECT_FALSE(list_[0].tag);
  information_.wma_available = false;
  EXPECT_EQ(Added("\\m\\c.wma") + Added("\\m\\x.ogg"), "");
  EXPECT_EQ(information_.asked, "");
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
  // Deeper than lists stay open.
  files_.Put("\\m\\inner.pls", "File1=\\m\\b.ogg\nFile2=\\m\\a.mp3\nFile3=\\0.m3u\n");
  files_.Put("\\m\\outer.m3u", "a.mp3\ninner.pls\nc.wma\n");
  PutChain(9);
  const std::string whole = Added("\\m\\outer.m3u");
  ASSERT_EQ(whole.size(), 36u + 18 * 7);
  for (const int kind : {0, 1, 2, 3}) {
    const bool from_then_on = kind % 2, memory = kind < 2;
    test::Sweep([&](long n) {
      ChainGuard guard;
      std::optional<HeapFaults> faults;
      if (memory) faults.emplace(n, static_cast<HeapFaults::Mode>(from_then_on));
      if (!memory) files_.FailAfter(n, from_then_on);
      const std::string paths = Added("\\m\\outer.m3u", &guard);
      const bool failed = memory ? faults->triggered() : files_.fault_triggered();
      faults.reset();
      files_.FailAfter(-1);
      EXPECT_FALSE(guard.IsOpen(Wide("\\m\\outer.m3u")));
      EXPECT_TRUE(failed ? test::IsPartInOrder(paths, whole) : paths == whole) << paths;
      return failed;
    });
  }
}

TEST_F(AddPathTest, ToleratesFilesThatVanish) {
  files_.Put("\\m\\outer.m3u", "inner.m3u\na.mp3\n");
  files_.Put("\\m\\inner.m3u", "b.ogg\n");
  files_.before = [](test::MemoryFiles& files, const std::string& call) {
    if (call == "attributes \\m\\b.ogg") files.Delete(Wide("\\m\\outer.m3u"));
    if (call == "open \\m\\a.mp3") files.Delete(Wide("\\m\\a.mp3"));
  };
  EXPECT_EQ(Added("\\m\\outer.m3u"), "\\m\\b.ogg \\m\\a.mp3 ") << "an open list is read to its end";
  EXPECT_FALSE(list_[1].tag) << "the file went between the two looks at it";
}

TEST_F(AddPathTest, ExpandsAThousandListsInEachOther) {
  PutChain(1000);
  Added(Name(0));
  EXPECT_EQ(list_.size(), 2000u);
  EXPECT_LE(files_.most_open, 10) << "eight lists and the entry's own file";
  ChainGuard guard;
  Added(Name(0), &guard);
  EXPECT_EQ(list_.size(), 2000u);
  EXPECT_FALSE(guard.IsOpen(Wide(Name(0)))) << "left again";
}

TEST_F(AddPathTest, LosesTheRestOfAnOuterListThatVanishes) {
  PutChain(12);
  files_.before = [](test::MemoryFiles& files, const std::string& call) {
    if (call == "open " + Name(11)) files.Delete(Wide(Name(0)));
  };
  Added(Name(0));
  EXPECT_EQ(list_.size(), 23u);
}

TEST_F(AddPathTest, GuardRefusesListsInsideThemselves) {
  files_.Put("\\\u00C9self.m3u", "x.mp3\n\\\xE9SELF.M3U\nx.mp3\n");
  files_.Put("\\a.m3u", "b.m3u\nx.mp3\nb.m3u\n");
  files_.Put("\\b.m3u", "x.mp3\na.m3u\n");
  files_.Put("\\gone.m3u", "missing.m3u\nx.mp3\n");
  const struct {
    const char* path;
    size_t want;
  } kCases[] = {{"\\\u00C9self.m3u", 2}, {"\\a.m3u", 3}, {"\\b.m3u", 2}, {"\\gone.m3u", 1}};
  for (const auto& c : kCases) {
    ChainGuard guard;
    Added(c.path, &guard);
    EXPECT_EQ(list_.size(), c.want) << c.path;
    for (const wchar_t* left : {L"\\missing.m3u", L"\\gone.m3u"}) EXPECT_FALSE(guard.IsOpen(left));
  }
  const HeapFaults faults(2000, HeapFaults::Mode::kFromThenOn);
  Added("\\\u00C9self.m3u");
  EXPECT_GT(list_.size(), 100u) << "again and again, as long as there is memory";
}

TEST_F(AddPathTest, GuardEndsListsThatNameEachOtherCrosswise) {
  std::string all;
  for (int i = 0; i < 12; ++i) all += Name(i) + "\n";
  for (int i = 0; i < 12; ++i) files_.Put(Name(i), all);
  ChainGuard guard;
  Added(Name(0), &guard);
  size_t opened = 0;
  for (int i = 0; i < 12; ++i) opened += Opened(Name(i));
  EXPECT_GT(opened, ChainGuard::kMostLists);
  EXPECT_LT(opened, ChainGuard::kMostLists * 3) << "and outer lists opened again";
}

// Two small files that name 2000 x 300 songs, or lines without any.
TEST_F(AddPathTest, GuardBoundsWhatListsInListsAmountTo) {
  const struct {
    const char* line;
    size_t lines, most, opened;
  } kCases[] = {{"\\x.mp3\n", 300, 100000, 334},
                {"\\x.mp3\n", 250, 100000, 400},
                {"#\n", 3000, 1000000, 334},
                {"#\n", 2500, 1000000, 400}};
  std::string outer;
  for (int i = 0; i < 2000; ++i) outer += "inner.m3u\n\\x.mp3\n";
  files_.Put("\\outer.m3u", outer);
  for (const auto& c : kCases) {
    std::string inner;
    for (size_t i = 0; i < c.lines; ++i) inner += c.line;
    files_.Put("\\inner.m3u", inner);
    class Counter final : public PathSink {
     public:
      void AddMedia(MediaKind, const wchar_t*, const ListPosition* from) noexcept override {
        ++(from->list[1] == L'o' ? outer : inner);
      }
      size_t outer = 0, inner = 0;
    } counter;
    ChainGuard guard;
    files_.log.clear();
    ExpandPath(files_, L"\\outer.m3u", &guard, counter);
    EXPECT_EQ(counter.outer, 2000u) << "a list's own songs are all taken";
    EXPECT_EQ(counter.inner, c.line[0] == '#' ? 0 : c.most);
    EXPECT_EQ(Opened("\\inner.m3u"), c.opened);
  }
}

TEST_F(AddPathTest, WritingFailsWhenNoFileCanBeCreatedAndNeverLosesTheOldOne) {
  for (const wchar_t* path : {L"\\a.mp3", L"\\b.mp3"}) ASSERT_TRUE(list_.Add(path));
  list_[0].tag.Reset(HeapNew<TagBlock>());
  list_[0].tag->artist[0] = 'A';
  list_[0].tag->title[0] = 'T';
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
  EXPECT_EQ(calls, 10) << "attributes twice, create, four lines, flush, two moves";
  EXPECT_EQ(created, 8) << "what comes after the creation does not decide";
  const std::string lines[] = {"#EXTM3U:\r\n", "#EXTINF:-1,A - T\r\n", "\\a.mp3\r\n",
                               "\\b.mp3\r\n"};
  EXPECT_EQ(files_.Find("\\out.m3u")->bytes, lines[0] + lines[1] + lines[2] + lines[3]);
  for (long failing = 0; failing < 4; ++failing) {
    files_.Delete(L"\\new.m3u");
    files_.FailAfter(failing, false, "write");
    bool complete = true;
    EXPECT_TRUE(WriteM3u(files_, L"\\new.m3u", list_, &complete));
    EXPECT_FALSE(complete);
    std::string want;
    for (long i = 0; i < 4; ++i) want += i == failing ? "" : lines[i];
    EXPECT_EQ(files_.Find("\\new.m3u")->bytes, want) << "where nothing was, all that fits stays";
  }
  EXPECT_EQ(files_.open_now, 0);
}

}  // namespace
}  // namespace kelvo
