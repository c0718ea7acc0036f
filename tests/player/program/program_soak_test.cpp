// Many tracks and much clicking, at full speed: everything is played, and nothing is left behind.
#include <gtest/gtest.h>

#include "host/player/views/equalizer_view.h"
#include "tests/player/program/catalog_user.h"
#include "tests/player/program/recordings.h"
#include "tests/player/program/resources.h"

namespace velmora::test {
namespace {

std::wstring CopyMedia(const wchar_t* name, const std::wstring& to) {
  EXPECT_TRUE(CopyFileW((std::wstring(L"..\\..\\media\\") + name).c_str(), to.c_str(), FALSE));
  return to;
}

std::wstring Numbered(int number) {
  return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

// A leak comes with every round, what a cache takes with some of them.
constexpr size_t MostGrowths(int rounds) {
  return static_cast<size_t>(rounds) / 2;
}

void PlayFromTheTop(const PlayerProcess& player) {
  player.Key(player.playlist(), VK_HOME);
  player.Key(player.playlist(), VK_RETURN);
}

TEST(ProgramSoak, FiftyTracksInARow) {
  constexpr int kTracks = 50;
  constexpr int kRounds = 5;
  constexpr size_t kMostBytes = 256 * 1024;  // of 200 tracks
  const struct {
    const wchar_t* name;
    size_t samples;  // of two seconds
  } kFiles[] = {{L"tone_8000_mono.ogg", 16000},
                {L"tone_11025_stereo.ogg", 44100},
                {L"tone_8000_stereo.ogg", 32000}};
  const Installed installed;
  const Recordings recordings(installed, true);
  const std::wstring folder = installed.Path(L"fifty");
  CreateDirectoryW(folder.c_str(), nullptr);
  for (int i = 1; i <= kTracks; ++i) {
    CopyMedia(kFiles[i % 3].name, folder + L"\\" + Numbered(i) + L".ogg");
  }
  PlayerProcess player;
  ASSERT_TRUE(player.Start(installed, L"\"" + folder + L"\""));
  LeakWatch watch;
  Resources warm, now;
  std::string history;
  for (int round = 0; round < kRounds; ++round) {
    const int before = round * kTracks;
    if (round > 0) PlayFromTheTop(player);
    ASSERT_TRUE(recordings.WaitForSamples(player, before + kTracks, kFiles[kTracks % 3].samples));
    ASSERT_TRUE(player.WaitUntilStopped());
    for (int i = 1; i <= kTracks; ++i) {
      EXPECT_EQ(recordings.Count(before + i), kFiles[i % 3].samples) << i;
    }
    EXPECT_EQ(recordings.Count(before + kTracks + 1), 0u);
    now = CountResources(player.process());
    EXPECT_GT(now.gdi_objects * now.windows * now.handles * now.private_bytes, 0u) << Text(now);
    if (round == 0) warm = now;
    watch.AddRound(now);
    history += Text(now) + "\n";
  }
  EXPECT_LE(watch.gdi_objects(), MostGrowths(kRounds - 1)) << history;
  EXPECT_LE(watch.windows(), MostGrowths(kRounds - 1)) << history;
  EXPECT_LE(watch.handles(), MostGrowths(kRounds - 1)) << history;
  EXPECT_LE(now.private_bytes, warm.private_bytes + kMostBytes) << history;
  EXPECT_TRUE(player.Quit());
}

// Ten minutes of music in rounds, with something else of the player in each of them.
class Soak {
 public:
  Soak() : recordings_(installed_, true), catalog_(player_) {
    const std::wstring folder = installed_.Path(L"music");
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int i = 1; i <= kTracks; ++i) {
      CopyMedia(i % 2 == 0 ? L"sample.wma" : L"sample.ogg",
                folder + L"\\" + Numbered(i) + (i % 2 == 0 ? L".wma" : L".ogg"));
    }
    started_ = player_.Start(installed_, L"player --device V:\\ \"" + folder + L"\"");
  }

  bool started() const { return started_; }
  PlayerProcess& player() { return player_; }

  // The list from its first track to its end.
  void Round(int round) {
    if (round > 0) PlayFromTheTop(player_);
    ASSERT_TRUE(recordings_.WaitForSamples(player_, Number(round, 1), 1));
    Disturb(round);
    for (int track = 1; track <= kTracks; ++track) {
      const size_t whole = track % 2 == 0 ? wma_samples_ : ogg_samples_;
      ASSERT_TRUE(recordings_.WaitForSamples(player_, Number(round, track), whole));
    }
    ASSERT_TRUE(player_.WaitUntilStopped());
    for (int track = 1; track <= kTracks; ++track) {
      size_t& whole = track % 2 == 0 ? wma_samples_ : ogg_samples_;
      const size_t played = recordings_.Count(Number(round, track));
      if (track <= 2 && round == 0) whole = played;
      EXPECT_EQ(played, whole) << "track " << track << " of round " << round;
      DeleteFileW(recordings_.Path(Number(round, track)).c_str());
    }
  }

 private:
  static constexpr int kTracks = 8;
  static int Number(int round, int track) { return round * kTracks + track; }

  void Disturb(int round) {
    ASSERT_TRUE(catalog_.Open());
    catalog_.GoTo(CatalogUser::kPlaylists);
    catalog_.GoTo(CatalogUser::kCurrent);
    catalog_.Close();
    player_.Do(kCommandBookmarkAdd);
    player_.Click(player_.equalizer(), 27, 24);  // on or off
    player_.Click(player_.equalizer(), 85 + 18 * (round % 10), kGainSlider.start + 3 * round);
    player_.Do(kCommandBookmarks);
    const HWND dialog = player_.WaitForWindow(L"#32770", L"Velmora Bookmarks");
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(player_.WaitFor("the end of the bookmarks", [&] { return !IsWindow(dialog); }));
    for (int twice = 0; twice < 2; ++twice) player_.Do(kCommandDoubleSize);
    player_.Click(player_.playlist(), 268, 7);  // its close button
    ASSERT_TRUE(player_.WaitFor("no playlist", [&] { return player_.playlist() == nullptr; }));
    player_.Do(kCommandPlaylistWindow);
    ASSERT_TRUE(player_.WaitFor("the playlist", [&] { return player_.playlist() != nullptr; }));
  }

  Installed installed_;
  Recordings recordings_;
  PlayerProcess player_;
  CatalogUser catalog_;
  bool started_ = false;
  size_t ogg_samples_ = 1;  // not known before the first round
  size_t wma_samples_ = 1;
};

TEST(ProgramSoak, TenMinutesOfMusicLeaveNothingBehind) {
  constexpr int kRounds = 10;  // of 64 seconds
  constexpr int kWarmUp = 3;
  // The system's reader of Windows Media keeps some kilobytes of each file, and takes more in
  // steps.
  constexpr size_t kMostBytes = 3 << 20;
  Soak soak;
  ASSERT_TRUE(soak.started());
  LeakWatch watch;
  Resources warm, now;
  std::string history;
  for (int round = 0; round < kRounds; ++round) {
    ASSERT_NO_FATAL_FAILURE(soak.Round(round));
    now = CountResources(soak.player().process());
    if (round + 1 == kWarmUp) warm = now;
    if (round + 1 >= kWarmUp) watch.AddRound(now);
    history += Text(now) + "\n";
  }
  EXPECT_LE(watch.gdi_objects(), MostGrowths(kRounds - kWarmUp)) << history;
  EXPECT_LE(watch.windows(), MostGrowths(kRounds - kWarmUp)) << history;
  EXPECT_LE(watch.handles(), MostGrowths(kRounds - kWarmUp)) << history;
  EXPECT_LE(now.private_bytes, warm.private_bytes + kMostBytes) << history;
  EXPECT_TRUE(soak.player().Quit());
}

}  // namespace
}  // namespace velmora::test
