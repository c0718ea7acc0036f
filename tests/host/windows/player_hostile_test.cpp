// Whatever lies in the skin's folder or in the file of the settings: the player starts, with what
// it has for a first start, plays, and leaves in good order.
#include <string.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "tests/host/windows/player_driver.h"
#include "tests/host/windows/recordings.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

class PlayerHostile : public testing::Test {
 protected:
  // Starts with these settings and plays something. The size of the main window is that of `scale`;
  // its sound is untouched.
  void StartPlayAndQuit(const std::string& session, int scale = 1) {
    const Recordings recordings(folder_, L"sound" + std::to_wstring(++starts_), true);
    folder_.Write(L"velmora.session", session);
    PlayerDriver player({{Media(L"tone_8000_stereo.ogg")}, L"", folder_.Path(L"velmora.session")});
    ASSERT_TRUE(recordings.WaitForSamples(1, sound_.size() / 2));
    ASSERT_TRUE(player.WaitUntilStopped());
    const RECT place = Place(player.main());
    EXPECT_EQ(place.right - place.left, 275 * scale);
    EXPECT_EQ(place.bottom - place.top, 116 * scale);
    EXPECT_TRUE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL)) << "nobody can reach it";
    player.Quit();
    const std::vector<int16_t> recorded = recordings.Read(1);
    ASSERT_EQ(recorded.size(), sound_.size() / 2);
    EXPECT_EQ(memcmp(recorded.data(), sound_.data(), sound_.size()), 0);
    const Session kept = ParseSession(folder_.Read(L"velmora.session"));
    EXPECT_EQ(kept.tracks.size(), 1u);
    EXPECT_GT(kept.main_window.width, 0);
  }
  // Puts the default skin's files into a folder, each changed by `change`.
  template <class Change>
  void TrySkin(const std::string& name, Change change) {
    SCOPED_TRACE(name);
    const std::filesystem::path folder = folder_.Path(kelvo::test::Wide(name).c_str());
    std::filesystem::create_directory(folder);
    for (const auto& file : std::filesystem::directory_iterator("skins/default")) {
      std::ifstream in(file.path(), std::ios::binary);
      std::string bytes(std::istreambuf_iterator<char>(in), {});
      if (change(&bytes)) {
        std::ofstream(folder / file.path().filename(), std::ios::binary) << bytes;
      }
    }
    StartPlayAndQuit("skin=" + kelvo::test::Utf8(folder.wstring().c_str()) + "\n");
  }

  const kelvo::test::InstallationFolder folder_;
  const std::vector<char> sound_ =
      kelvo::test::DecodeDirectly(kelvo::test::ReadMedia("tone_8000_stereo.ogg"));
  int starts_ = 0;
};

std::string RandomBytes(size_t count, uint32_t seed) {
  std::mt19937 random(seed);
  std::string bytes(count, '\0');
  for (char& c : bytes) c = static_cast<char>(random());
  return bytes;
}

TEST_F(PlayerHostile, Settings) {
  std::string many_tracks;
  for (int i = 0; i < 30000; ++i) many_tracks += "track=C:\\none\\" + std::to_string(i) + ".ogg\n";
  const struct {
    const char* name;
    std::string text;
    int scale = 1;
  } kCases[] = {
      {"nothing", ""},
      {"noise", RandomBytes(100000, 1)},
      {"one long line", "volume=" + std::string(5000000, '9')},
      {"lines of signs", std::string(300000, '=') + std::string(300000, '\n')},
      {"numbers out of range",
       "volume=101\nbalance=-101\nequalizer_on=2\npreamp=28\nbass=5\ncurrent=99999999999\n"
       "double_size=-1\nbands=1,2,3\nshuffle=x\nrepeat=\n"},
      {"windows far away",
       "main_window=1,29999,29999,275,116\nequalizer_window=1,-29999,29999,275,116\n"
       "playlist_window=1,-30000,-30000,275,116\n"},
      {"windows of no size and of every size",
       "main_window=0,0,0,30000,30000\nequalizer_window=1,0,0,1,1\n"
       "playlist_window=1,0,0,30000,30000\n"},
      {"an endless playlist, twice as large",
       "double_size=1\nmain_window=1,0,0,550,232\nplaylist_window=1,0,0,30000,30000\n", 2},
      {"tracks that are not there", many_tracks + "current=29999\n"},
      {"tracks that are no files", "track=Z:\\\ntrack=C:\\windows\ntrack=\\\\?\\\ntrack=CON\n"},
      {"a skin that is not there", "skin=C:\\none\n"},
      {"a skin that is no skin", "skin=" + kelvo::test::Utf8(folder_.path().c_str())},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    StartPlayAndQuit(c.text, c.scale);
    if (HasFatalFailure()) return;
  }
}

TEST_F(PlayerHostile, Skins) {
  constexpr size_t kWidth = 18, kHeight = 22, kBits = 28;  // in a bitmap's header
  const auto put = [](std::string* bytes, size_t at, int32_t value) {
    if (at + 4 <= bytes->size()) memcpy(&(*bytes)[at], &value, 4);
    return true;
  };
  uint32_t seed = 0;
  int number = 0;
  TrySkin("truncated", [&](std::string* b) { return b->resize(b->size() * 2 / 3), true; });
  TrySkin("only headers", [&](std::string* b) { return b->resize(54), true; });
  TrySkin("empty files", [&](std::string* b) { return b->clear(), true; });
  TrySkin("every second", [&](std::string*) { return ++number % 2 == 0; });
  TrySkin("huge",
          [&](std::string* b) { return put(b, kWidth, 0x7FFFFFFF), put(b, kHeight, 0x7FFFFFFF); });
  TrySkin("wide", [&](std::string* b) { return put(b, kWidth, 1 << 24); });
  TrySkin("upside down", [&](std::string* b) { return put(b, kHeight, INT32_MIN); });
  TrySkin("one pixel", [&](std::string* b) { return put(b, kWidth, 1), put(b, kHeight, 1); });
  TrySkin("no colours", [&](std::string* b) { return put(b, kBits, 0x10003); });
  TrySkin("noise", [&](std::string* b) { return *b = RandomBytes(b->size(), ++seed), true; });
}

}  // namespace
}  // namespace velmora::test
