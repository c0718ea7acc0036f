// Whatever happens to the writer, the file holds the list before or the list after a change.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

#include "bookmarks/bookmarks_feature.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/memory_files.h"
#include "tests/support/writer_process.h"

namespace kelvo {
namespace {

using Strings = std::vector<std::string>;

// As the next start of the player finds it.
Strings Loaded(FileSystem& files, InstallFolder& folder) {
  BookmarkStore store(files, folder);
  store.Load();
  Strings texts;
  for (int32_t i = 0; i < store.size(); ++i) texts.push_back(test::Text(store.At(i)));
  return texts;
}

const std::string kText(51, 'd');

void AddMany(BookmarksFeature& feature) {
  for (int32_t i = 0; i < 40; ++i) {
    feature.AddBookmark(test::Wide("\\" + std::string(50, 'p')), i, test::Wide(kText));
  }
}

TEST(BookmarkLossTest, NoFailingCallLosesTheList) {
  test::FixedFolder folder;
  for (const bool from_then_on : {false, true}) {
    const long calls = test::Sweep([&](long n) {
      test::MemoryFiles files;
      files.PutFolder("\\V");
      BookmarksFeature feature(files, folder, nullptr);
      AddMany(feature);
      const Strings before = Loaded(files, folder);
      EXPECT_EQ(before.size(), 40u);
      files.FailAfter(n, from_then_on);
      feature.SetLastPlayed(L"\\live", 1, L"new");
      const bool failed = files.fault_triggered();
      int32_t position = 0;
      feature.GetBookmark(0, nullptr, nullptr, &position);
      EXPECT_EQ(position, 1) << "the list in memory is changed all the same";
      EXPECT_EQ(files.open_now, 0);
      files.FailAfter(-1);
      const bool finished = files.Find("\\V\\bookmarks.da$") != nullptr;
      const Strings after = Loaded(files, folder);
      EXPECT_TRUE(after != before || (failed && !finished));
      if (after != before) {
        Strings want = before;
        want.insert(want.begin(), "\\live|1|(Last Played) new");
        EXPECT_EQ(after, want);
      }
      return failed;
    });
    EXPECT_EQ(calls, 14) << "attributes, create, nine blocks, flush, two moves";
  }
}

TEST(BookmarkLossTest, WhatCouldNotBeReadIsPutAsideByTheNextChange) {
  test::FixedFolder folder;
  for (const bool memory : {false, true}) {
    const long faults = test::Sweep([&](long n) {
      test::MemoryFiles files;
      files.PutFolder("\\V");
      BookmarksFeature feature(files, folder, nullptr);
      AddMany(feature);
      const std::string whole = files.Find("\\V\\bookmarks.dat")->bytes;
      bool failed;
      int32_t kept;
      {
        const test::HeapFaults heap(memory ? n : -1, test::HeapFaults::Mode::kFromThenOn);
        files.FailAfter(memory ? -1 : n);
        kept = feature.LoadBookmarks();
        failed = memory ? heap.triggered() : files.fault_triggered();
      }
      files.FailAfter(-1);
      for (int32_t i = 0; i < kept; ++i) {
        int32_t position = -1;
        wchar_t text[kMaxText] = L"";
        feature.GetBookmark(i, nullptr, text, &position);
        EXPECT_EQ(std::to_string(position) + test::Utf8(text), std::to_string(i) + kText);
      }
      EXPECT_TRUE(failed || kept == 40);
      feature.SetLastPlayed(L"\\live", 1, L"new");
      const test::MemoryFiles::File* const aside = files.Find("\\V\\bookmarks.bak");
      const size_t found = Loaded(files, folder).size();
      EXPECT_TRUE(aside ? aside->bytes == whole : found == 41) << found;
      EXPECT_TRUE(failed || !aside);
      return failed;
    });
    EXPECT_GE(faults, 5);
  }
}

// The newest list lies beside the file, where the last save broke off, and cannot be read.
TEST(BookmarkLossTest, WhatIsPutAsideIsTheNewestIfItIsStillThere) {
  test::FixedFolder folder;
  for (const bool gone : {false, true}) {
    test::MemoryFiles files;
    files.Put("\\V\\bookmarks.dat", "\\old\r\n1\r\nold\r\n");
    const std::string newest = "\\newest\r\n2\r\nnewest\r\n";
    files.Put("\\V\\bookmarks.da$", newest);
    BookmarksFeature feature(files, folder, nullptr);
    files.before = [](test::MemoryFiles& now, const std::string& call) {
      now.FailAfter(call.find("bookmarks.da$ \\V\\bookmarks.dat") != std::string::npos ||
                            call.find("open") == 0
                        ? 0
                        : -1);
    };
    feature.LoadBookmarks();
    if (gone) files.Delete(L"\\V\\bookmarks.da$");
    feature.AddBookmark(L"\\live", 3, L"new");
    files.before = nullptr;
    files.FailAfter(-1);
    EXPECT_EQ(Loaded(files, folder), Strings{"\\live|3|new"});
    const test::MemoryFiles::File* const aside = files.Find("\\V\\bookmarks.bak");
    EXPECT_EQ(aside ? aside->bytes : "", gone ? "\\old\r\n1\r\nold\r\n" : newest);
  }
}

// Saves the place that is played for ever, one second further each time.
void PlayForEver(const std::string& folder_path) {
  test::FixedFolder folder(folder_path);
  BookmarksFeature feature(SystemFiles(), folder, nullptr);
  feature.LoadBookmarks();
  int32_t position_s = 0;
  feature.GetBookmark(0, nullptr, nullptr, &position_s);
  while (++position_s != 0) feature.SetLastPlayed(L"\\live", position_s, L"T");
}

class BookmarkFileLossTest : public ::testing::Test {
 protected:
  BookmarkFileLossTest() {
    if (test::WriterProcess::IsThis()) return;
    RemoveFiles();
    BookmarksFeature feature(SystemFiles(), folder_, nullptr);
    feature.SetLastPlayed(L"\\live", 1, L"T");
    AddMany(feature);
    whole_ = Loaded(SystemFiles(), folder_);
  }
  ~BookmarkFileLossTest() { RemoveFiles(); }
  static bool Remove(const char* name) { return SystemFiles().Delete(test::Wide(name)); }
  static void RemoveFiles() {
    for (const char* end : {"dat", "da~", "da$", "bak"})
      Remove((".\\bookmarks." + std::string(end)).c_str());
  }
  static std::string FileBytes() {
    std::ifstream file("bookmarks.dat", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // The position of the place that was played; all others must be there.
  int32_t PlayedTo() {
    Strings loaded = Loaded(SystemFiles(), folder_);
    EXPECT_EQ(loaded.size(), 41u);
    if (loaded.size() != 41) return -1;
    const int32_t position_s = atoi(loaded[0].c_str() + strlen("\\live|"));
    loaded[0] = whole_[0];
    EXPECT_EQ(loaded, whole_);
    return position_s;
  }

  test::FixedFolder folder_{"."};
  Strings whole_;
};

TEST_F(BookmarkFileLossTest, KillingTheWriterLosesNothing) {
  const int rounds = test::KilledWriters(test::WriterProcess::kUsual);
  const std::string before = FileBytes();
  int32_t last = 1;
  int unfinished = 0, finished = 0;
  for (int round = 0; round < rounds; ++round) {
    {
      test::WriterProcess writer([] { PlayForEver("."); });
      // On a busy machine the first change takes its time. Loading would keep the writer out.
      for (std::string now; round == 0 && (now.empty() || now == before); now = FileBytes()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
      }
      writer.KillAfter(1000 + round * 7919 % 14983);
    }
    unfinished += SystemFiles().Exists(L".\\bookmarks.da~");
    finished += SystemFiles().Exists(L".\\bookmarks.da$");
    const int32_t played_to = PlayedTo();
    ASSERT_GE(played_to, last) << "in round " << round;
    last = played_to;
  }
  EXPECT_GT(last, 1) << "nothing was saved";
  printf("killed %d writers after %d saves; %d had an unfinished file, %d a finished one\n", rounds,
         last, unfinished, finished);
}

#ifndef _WIN32
TEST_F(BookmarkFileLossTest, AFullDiskLosesNothing) {
  BookmarksFeature feature(SystemFiles(), folder_, nullptr);
  feature.LoadBookmarks();
  int fits = 0;
  for (size_t bytes = 0; bytes < 12000; bytes += 500) {
    {
      const test::FileSizeLimit full(bytes);
      feature.SetLastPlayed(L"\\live", 2 + fits, L"T");
    }
    const int32_t played_to = PlayedTo();
    if (played_to == 2 + fits) {
      ++fits;
    } else {
      EXPECT_EQ(played_to, 1);
      EXPECT_EQ(fits, 0);
      EXPECT_FALSE(Remove(".\\bookmarks.da~")) << "left behind at " << bytes;
    }
  }
  EXPECT_GT(fits, 0);
  EXPECT_LT(fits, 24);
}
#endif

}  // namespace
}  // namespace kelvo
