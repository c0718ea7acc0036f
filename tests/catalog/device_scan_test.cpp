#include "catalog/lists/device_lists.h"

#include <gtest/gtest.h>

#include "tests/support/fake_information.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo {
namespace {

using test::FakeInformation;
using test::HeapFaults;
using test::Id3v1Tag;
using test::MemoryFiles;
using test::Utf8;

class DeviceScanTest : public testing::Test {
 protected:
  DeviceScanTest() {
    files_.Put("\\z.mp3", Id3v1Tag("T", "A", "L", 8));
    files_.PutFolder("\\Music");
    files_.Put("\\Music\\list.M3U", "");
    files_.Put("\\Music\\a.ogg", "");
    files_.Put("\\Music\\cover.jpg", "");
    files_.PutFolder("\\Music\\Deep.mp3");  // a folder, whatever its name
    files_.Put("\\Music\\Deep.mp3\\b.wma", "");
    files_.Put("\\c.asx", "");
    files_.Put("\\d.pls", "");
    information_.known["\\Music\\a.ogg"] = {"Ogg", "", "", ""};
  }
  std::string Scan(const wchar_t* folder = L"") {
    media_.Clear();
    playlists_.Clear();
    ScanFolder(files_, information_, folder, {&media_, &playlists_});
    EXPECT_EQ(files_.open_now, 0);
    std::string text;
    for (const MediaEntry& entry : media_) {
      text += Utf8(entry.path.c_str()) + (entry.tag ? "+" : "") + "\n";
    }
    for (size_t i = 0; i < playlists_.size(); ++i) text += "list " + Utf8(playlists_[i]) + "\n";
    return text;
  }

  MemoryFiles files_;
  FakeInformation information_;
  EntryList media_;
  PlaylistFiles playlists_;
};

TEST_F(DeviceScanTest, FindsEverythingInTheFileSystemsOrder) {
  const char* const want =
      "\\z.mp3+\n\\Music\\a.ogg+\n\\Music\\Deep.mp3\\b.wma+\n"
      "list \\Music\\list.M3U\nlist \\c.asx\nlist \\d.pls\n";
  EXPECT_EQ(Scan(), want);
  EXPECT_EQ(Scan(), want);
  EXPECT_EQ(files_.log[0], "list \\*.*");
  information_.wma_available = false;
  EXPECT_EQ(Scan(L"\\Music\\Deep.mp3"), "");
}

TEST_F(DeviceScanTest, RefusesWhatDoesNotFitIn256Characters) {
  std::string folder;
  while (folder.size() < 240) folder += "\\0123456789", files_.PutFolder(folder);
  const std::string longest = folder + "\\" + std::string(256 - folder.size() - 6, 'd');
  ASSERT_EQ(longest.size() + 5, 256u);  // with "\*.*" and the terminator
  files_.PutFolder(longest + "x");
  files_.Put(longest + "x\\lost.m3u", "");
  files_.PutFolder(longest);
  files_.Put(longest + "\\a", "");
  const std::string name = "\\" + std::string(255 - folder.size() - 5, 'n') + ".m3u";
  files_.Put(folder + "\\x" + name.substr(1), "");
  files_.Put(folder + name, "");
  EXPECT_NE(Scan().find("list " + folder + name + "\n"), std::string::npos);
  EXPECT_EQ(playlists_.size(), 4u) << "one character less than the file before it";
  bool listed = false;
  for (const std::string& call : files_.log) listed |= call == "list " + longest + "\\*.*";
  EXPECT_TRUE(listed);
}

TEST_F(DeviceScanTest, GoesOnBehindEveryFault) {
  const auto count = [&] { return media_.size() + playlists_.size(); };
  long n = 0;
  test::SweepHeap([&] { Scan(); },
                  [&](bool failed) { EXPECT_GE(count(), failed ? n++ == 0 ? 0u : 2u : 6u); });
  test::Sweep([&](long call) {
    files_.FailAfter(call);
    Scan();
    const bool failed = files_.fault_triggered();
    EXPECT_GE(count(), failed ? call == 0 ? 0u : 3u : 6u);
    return failed;
  });
}

}  // namespace
}  // namespace kelvo
