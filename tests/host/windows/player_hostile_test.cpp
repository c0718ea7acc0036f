// Whatever the file of the settings holds: the player starts where its user can reach it, plays,
// and leaves in good order. (Bytes that are no settings: tests/fuzz; no bitmaps: tests/hostile.)
#include "tests/host/windows/player_driver.h"
#include "tests/support/installation_folder.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

TEST(PlayerHostile, Settings) {
  const kelvo::test::InstallationFolder folder;
  UseSink(L"silence", false);
  std::string many_tracks;
  for (int i = 0; i < 30000; ++i) many_tracks += "track=C:\\none\\" + std::to_string(i) + ".ogg\n";
  const struct {
    const char* name;
    std::string text;
    int scale = 1;
  } kCases[] = {
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
      {"a skin that is no skin", "skin=" + kelvo::test::Utf8(folder.path().c_str())},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    folder.Write(L"velmora.session", c.text);
    PlayerDriver player({{Media(L"sample.ogg")}, L"", folder.Path(L"velmora.session")});
    ASSERT_TRUE(player.WaitForSong("1. The Ring Buffers"));
    const RECT place = Place(player.main());
    EXPECT_EQ(place.right - place.left, 275 * c.scale);
    EXPECT_EQ(place.bottom - place.top, 116 * c.scale);
    EXPECT_TRUE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL)) << "nobody can reach it";
    player.Quit();
    const Session kept = ParseSession(folder.Read(L"velmora.session"));
    EXPECT_EQ(kept.tracks.size(), 1u);
    EXPECT_GT(kept.main_window.width, 0);
  }
}

}  // namespace
}  // namespace velmora::test
