#include "tests/playlist/playlist_fixture.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

class NestingTest : public test::PlaylistFixture {
 protected:
  NestingTest() { files_.Put("\\x.mp3", ""); }

  static std::string Name(int i) { return "\\" + std::to_string(i) + ".m3u"; }

  // Lists 0 to depth - 1, each with the next one between two entries.
  void PutChain(int depth) {
    for (int i = 0; i < depth; ++i) {
      files_.Put(Name(i), "\\x.mp3\n" + (i + 1 < depth ? Name(i + 1) : "") + "\n\\x.mp3\n");
    }
  }
};

TEST_F(NestingTest, ExpandsAThousandListsInEachOther) {
  PutChain(1000);
  Added(Name(0));
  EXPECT_EQ(list_.size(), 2000u);
  EXPECT_LE(files_.most_open, 10) << "eight lists and the entry's own file";
  ChainGuard guard;
  Added(Name(0), &guard);
  EXPECT_EQ(list_.size(), 2000u);
  EXPECT_FALSE(guard.IsOpen(test::Wide(Name(0)))) << "left again";
}

TEST_F(NestingTest, LosesTheRestOfAnOuterListThatVanishes) {
  PutChain(12);
  files_.before = [](test::MemoryFiles& files, const std::string& call) {
    if (call == "open " + Name(11)) files.Delete(test::Wide(Name(0)));
  };
  Added(Name(0));
  EXPECT_EQ(list_.size(), 23u);
}

TEST_F(NestingTest, GuardRefusesListsInsideThemselves) {
  files_.Put("\\\u00C9self.m3u", "x.mp3\n\\\xE9SELF.M3U\nx.mp3\n");
  files_.Put("\\a.m3u", "b.m3u\nx.mp3\nb.m3u\n");
  files_.Put("\\b.m3u", "x.mp3\na.m3u\n");
  const struct {
    const char* path;
    size_t want;
  } kCases[] = {{"\\\u00C9self.m3u", 2}, {"\\a.m3u", 3}, {"\\b.m3u", 2}, {"\\missing.m3u", 0}};
  for (const auto& c : kCases) {
    ChainGuard guard;
    Added(c.path, &guard);
    EXPECT_EQ(list_.size(), c.want) << c.path;
  }
}

TEST_F(NestingTest, GuardEndsListsThatNameEachOtherCrosswise) {
  std::string all;
  for (int i = 0; i < 12; ++i) all += Name(i) + "\n";
  for (int i = 0; i < 12; ++i) files_.Put(Name(i), all);
  ChainGuard guard;
  Added(Name(0), &guard);
  size_t opened = 0;
  for (const std::string& call : files_.log) opened += call.compare(0, 4, "open") == 0;
  EXPECT_GT(opened, ChainGuard::kMostLists);
  EXPECT_LT(opened, ChainGuard::kMostLists * 3) << "and outer lists opened again";
}

// Two small files that name 2000 x 300 songs, or lines without any.
TEST_F(NestingTest, GuardBoundsWhatListsInListsAmountTo) {
  const struct {
    const char* line;
    size_t lines, most;
  } kCases[] = {{"\\x.mp3\n", 300, ChainGuard::kMostNestedMedia},
                {"#\n", 3000, ChainGuard::kMostNestedLines}};
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
    size_t opened = 0;
    for (const std::string& call : files_.log) opened += call == "open \\inner.m3u";
    EXPECT_EQ(opened, c.most / c.lines + 1);
  }
}

// Counts how often a list inside itself is entered before it says no.
class CountingGuard final : public NestingGuard {
 public:
  bool Enter(const wchar_t*) noexcept override { return ++entered <= 500; }
  void Leave() noexcept override { ++left; }
  bool CountLine() noexcept override { return true; }
  bool CountMedia() noexcept override { return true; }
  int entered = 0;
  int left = 0;
};

TEST_F(NestingTest, WithoutAChainGuardAListIsExpandedAgainAndAgain) {
  files_.Put("\\self.m3u", "x.mp3\nself.m3u\n");
  CountingGuard guard;
  Added("\\self.m3u", &guard);
  EXPECT_EQ(list_.size(), 500u);
  EXPECT_EQ(guard.left, 500);
  files_.Put("\\gone.m3u", "missing.m3u\nx.mp3\n");
  guard = CountingGuard();
  EXPECT_EQ(Added("\\gone.m3u", &guard), "\\x.mp3 ");
  EXPECT_EQ(guard.left, 2) << "also left when it could not be opened";
}

TEST_F(NestingTest, SurvivesEveryFailingAllocationAndRead) {
  PutChain(12);
  for (const bool memory : {true, false}) {
    for (long n = 0;; ++n) {
      ASSERT_LT(n, 1000);
      ChainGuard guard;
      bool triggered;
      if (memory) {
        test::HeapFaults faults(n);
        Added(Name(0), &guard);
        triggered = faults.triggered();
      } else {
        files_.FailAfter(n);
        Added(Name(0), &guard);
        triggered = files_.fault_triggered();
        files_.FailAfter(-1);
      }
      EXPECT_LE(list_.size(), 24u);
      EXPECT_FALSE(guard.IsOpen(test::Wide(Name(0))));
      if (triggered) continue;
      EXPECT_EQ(list_.size(), 24u);
      break;
    }
  }
}

}  // namespace
}  // namespace kelvo
