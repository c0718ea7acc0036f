// The player without a face, with real files, plug-ins and the desktop's stand-ins.
#include <windows.h>

#include <stdio.h>

#include <functional>
#include <iterator>
#include <thread>
#include <vector>

#include "tests/player/rig.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"
#include "tests/support/owned_objects.h"

namespace velmora {
namespace {

using kelvo::ReadWav;
using test::Media;
using test::Rig;
using test::UseSink;

void WriteBytes(const std::wstring& path, const char* bytes, size_t count) {
  FILE* const file = _wfopen(path.c_str(), L"wb");
  ASSERT_NE(file, nullptr);
  fwrite(bytes, 1, count, file);
  fclose(file);
}

std::wstring SongWithoutMusic() {
  const std::vector<char> song =
      kelvo::test::WithoutSound(kelvo::test::ReadMedia("sample.ogg"), 44100);
  WriteBytes(L"without_music.ogg", song.data(), song.size());
  return L"without_music.ogg";
}

TEST(Player, PlaysAListOfBothKindsToItsEnd) {
  UseSink(L"player_list.wav", true);
  Rig rig;
  rig.player.Add({Media(L"tone_22050_stereo.ogg"), Media(L"sample.wma"),
                  Media(L"tone_8000_mono.ogg"), Media(L"mono.wma")});
  const uint32_t version = rig.player.list_version();
  rig.player.Play();
  EXPECT_EQ(rig.player.status().channels, 2u);
  EXPECT_EQ(rig.player.status().sample_rate_khz, 22u);
  ASSERT_TRUE(rig.RunUntilStopped());
  EXPECT_EQ(rig.ends, 4);
  EXPECT_EQ(rig.player.status().current, 3u);
  EXPECT_NE(rig.player.list_version(), version);
  EXPECT_EQ(rig.player.tracks()[1].title, L"The Ring Buffers - Sixteen Strings");
  EXPECT_EQ(rig.player.TakeNotice(), L"") << "all were heard";
  EXPECT_GT(rig.player.tracks()[1].length_ms, 7000u);
  EXPECT_EQ(ReadWav(L"player_list.wav").samples.size(), 2u * 2 * 22050);
  EXPECT_EQ(ReadWav(L"player_list-2.wav").rate, 44100u);
  EXPECT_GT(ReadWav(L"player_list-2.wav").samples.size(), 2u * 7 * 44100);
  EXPECT_EQ(ReadWav(L"player_list-3.wav").samples.size(), 2u * 8000);
  const kelvo::WavBytes mono = ReadWav(L"player_list-4.wav");
  EXPECT_EQ(mono.rate, 22050u);
  EXPECT_EQ(mono.channels, 2u) << "the player control gives both channels the same";
  ASSERT_GT(mono.samples.size(), 2u * 40000);
  for (size_t i = 1; i < mono.samples.size(); i += 2)
    ASSERT_EQ(mono.samples[i - 1], mono.samples[i]);
}

TEST(Player, MarksWhatCannotBePlayedAndSaysWhy) {
  WriteBytes(L"garbage.ogg", "no music at all", 15);
  WriteBytes(L"garbage.wma", "no music at all", 15);
  WriteBytes(L"empty.ogg", "", 0);
  WriteBytes(L"locked.ogg", "x", 1);
  CreateDirectoryW(L"folder.ogg", nullptr);
  const HANDLE lock =
      CreateFileW(L"locked.ogg", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  const struct {
    const wchar_t* file;
    Trouble want;
  } kCases[] = {{L"missing.ogg", Trouble::kMissing}, {L"empty.ogg", Trouble::kEmpty},
                {L"garbage.ogg", Trouble::kDamaged}, {L"locked.ogg", Trouble::kUnreadable},
                {L"missing.wma", Trouble::kMissing}, {L"garbage.wma", Trouble::kDamaged},
                {L"folder.ogg", Trouble::kFolder}};
  UseSink(L"silence", false);
  for (const bool by_playing : {false, true}) {
    Rig rig;
    for (const auto& c : kCases) rig.player.Add({c.file});  // the folder is searched: it is empty
    rig.player.Add({Media(L"sample.ogg")});
    const size_t count = std::size(kCases) - 1;
    ASSERT_EQ(rig.player.tracks().size(), count + 1);
    if (by_playing) {
      EXPECT_TRUE(rig.player.PlayTrack(1));
      EXPECT_EQ(rig.player.TakeNotice(), L"Not played: 2. empty: an empty file (and 4 more)");
      EXPECT_EQ(rig.player.TakeNotice(), L"") << "said once";
    } else {
      while (rig.player.LearnNext()) {
      }
      EXPECT_EQ(rig.player.TakeNotice(), L"") << "nobody wanted to hear it yet";
    }
    for (size_t i = by_playing; i < count; ++i) {
      EXPECT_EQ(rig.player.tracks()[i].trouble, kCases[i].want) << i;
    }
    EXPECT_EQ(rig.player.tracks()[count].trouble, Trouble::kNone);
  }
  EXPECT_EQ(TroubleOf(test::TheLibrary(), L"folder.ogg"), Trouble::kFolder);
  EXPECT_EQ(TroubleOf(test::TheLibrary(), Media(L"sine.mp3")), Trouble::kOtherKind);
  CloseHandle(lock);
  RemoveDirectoryW(L"folder.ogg");
  for (const auto& c : kCases) DeleteFileW(c.file);
}

TEST(Player, SaysWhyItSkipsAFileWhoseNameTheCodePageLacks) {
  UseSink(L"silence", true);
  Rig rig;
  rig.player.Add({L"Z:\\\x4E2D.wma", Media(L"tone_8000_mono.ogg")});
  std::string said;
  {
    const kelvo::test::BoxAnswer box(L"Error", &said);
    rig.player.Play();
  }
  EXPECT_EQ(said, "Please, change regional settings to correctly play file Z:\\\xE4\xB8\xAD.wma");
  EXPECT_EQ(rig.player.status().current, 1u);
  ASSERT_TRUE(rig.RunUntilStopped());
}

TEST(Player, AMessageOfTheLastTrackDoesNotEndTheNext) {
  for (const wchar_t* first : {L"tone_8000_mono.ogg", L"sample.wma"}) {
    UseSink(L"silence", true);
    Rig rig;
    rig.player.Add({Media(first), Media(L"sample.ogg"), Media(L"tone_8000_mono.ogg")});
    ASSERT_TRUE(rig.player.PlayTrack(0));
    rig.WaitForWaitingEnd();
    UseSink(L"silence", false);
    rig.player.Next();
    rig.RunFor(300);
    EXPECT_EQ(rig.ends, 0) << first;
    EXPECT_EQ(rig.player.status().current, 1u) << first;
    EXPECT_EQ(rig.player.status().state, PlayState::kPlaying) << first;
  }
}

TEST(Player, SkipsWhatCannotBeOpened) {
  WriteBytes(L"garbage.ogg", "no music at all", 15);
  WriteBytes(L"garbage.wma", "no music at all", 15);
  UseSink(L"silence", false);
  Rig rig;
  rig.player.Add({L"missing.ogg", L"garbage.ogg", L"garbage.wma", L"missing.wma"});
  for (const bool repeat : {false, true}) {
    for (const bool shuffle : {false, true}) {
      rig.player.SetRepeat(repeat);
      rig.player.SetShuffle(shuffle);
      EXPECT_FALSE(rig.player.PlayTrack(1));
      EXPECT_EQ(rig.player.status().state, PlayState::kStopped);
      EXPECT_EQ(rig.player.status().current, 1u) << "what was asked for";
    }
  }
  rig.player.SetShuffle(false);
  rig.player.SetRepeat(false);
  rig.player.Add({Media(L"sample.ogg")});
  EXPECT_TRUE(rig.player.PlayTrack(0, 3000));
  EXPECT_EQ(rig.player.status().current, 4u);
  EXPECT_LT(rig.player.status().position_ms, 1500u) << "the place was another track's";
  EXPECT_FALSE(rig.player.PlayTrack(5));
  EXPECT_EQ(rig.player.status().state, PlayState::kStopped);
}

TEST(Player, GoesBackPastWhatCannotBeOpened) {
  UseSink(L"silence", false);
  Rig rig;
  rig.player.Add({L"missing.ogg", Media(L"sample.ogg"), L"missing.wma", Media(L"sample.wma")});
  ASSERT_TRUE(rig.player.PlayTrack(3));
  rig.player.Previous();
  EXPECT_EQ(rig.player.status().current, 1u);
  rig.player.Previous();
  EXPECT_EQ(rig.player.status().current, 1u) << "nothing before it plays";
  EXPECT_EQ(rig.player.status().state, PlayState::kPlaying);
}

std::function<void()> command;

LRESULT CALLBACK RunCommand(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_APP) command();
  return DefWindowProcW(window, message, wparam, lparam);
}

// Another thread's message comes in while the player looks for end messages.
TEST(Player, BearsCommandsWhileItStops) {
  UseSink(L"silence", false);
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RunCommand));
  Player player(test::TheLibrary(), window);
  player.Add({Media(L"sample.ogg"), Media(L"sample.wma"), Media(L"tone_44100_mono.ogg")});
  const struct {
    std::function<void()> first, meanwhile;
    PlayState state;
    size_t current;
  } kCases[] = {
      {[&] { player.Stop(); }, [&] { player.Stop(); }, PlayState::kStopped, 0},
      {[&] { player.Stop(); }, [&] { player.PlayTrack(1); }, PlayState::kPlaying, 1},
      {[&] { player.PlayTrack(2); }, [&] { player.PlayTrack(1); }, PlayState::kPlaying, 2},
      {[&] { player.PlayTrack(2); }, [&] { player.Clear(); }, PlayState::kStopped, kNoTrack},
  };
  for (const auto& c : kCases) {
    ASSERT_TRUE(player.PlayTrack(0));
    command = c.meanwhile;
    std::thread sender([&] { SendMessageW(window, WM_APP, 0, 0); });
    while (!(HIWORD(GetQueueStatus(QS_SENDMESSAGE)) & QS_SENDMESSAGE)) Sleep(1);
    c.first();
    sender.join();
    EXPECT_EQ(player.status().state, c.state);
    EXPECT_EQ(player.status().current, c.current);
    const std::wstring open = player.open_path();
    EXPECT_EQ(open, c.state == PlayState::kPlaying ? player.tracks()[c.current].path : L"");
    player.Stop();
  }
  DestroyWindow(window);
}

TEST(Player, RepeatEndsWhenNothingIsHeard) {
  UseSink(L"silence", false);
  const std::wstring song = SongWithoutMusic();
  Rig rig;
  rig.player.Add({song, L"missing.ogg", song});
  rig.player.SetRepeat(true);
  ASSERT_TRUE(rig.player.PlayTrack(0)) << "it opens";
  ASSERT_TRUE(rig.RunUntilStopped());
  EXPECT_LE(rig.ends, 3);
  EXPECT_EQ(rig.player.tracks()[0].trouble, Trouble::kDamaged);
  EXPECT_EQ(
      rig.player.TakeNotice().rfind(L"Not played: 1. The Ring Buffers - Eight Bars: damaged", 0),
      0u);

  UseSink(L"silence", true);
  rig.player.Add({Media(L"tone_8000_mono.ogg"), Media(L"sample.wma")});
  rig.player.Play();
  rig.ends = 0;
  ASSERT_TRUE(rig.RunUntil([&] { return rig.ends >= 13; })) << "music goes round and round";
  EXPECT_NE(rig.player.status().state, PlayState::kStopped);
}

TEST(Player, PausesAndSeeks) {
  for (const wchar_t* name : {L"sample.ogg", L"sample.wma"}) {
    SCOPED_TRACE(name[7]);
    UseSink(L"silence", false);
    Rig rig;
    Player& player = rig.player;
    player.Add({Media(name)});
    EXPECT_FALSE(player.SeekMs(1000)) << "nothing is open";
    ASSERT_TRUE(player.PlayTrack(0, 2000));
    ASSERT_TRUE(rig.RunUntil([&] { return player.status().position_ms > 2000; }));

    ASSERT_TRUE(player.SeekMs(6000));
    rig.RunFor(200);
    EXPECT_GE(player.status().position_ms, 5900u);
    EXPECT_FALSE(player.SeekMs(player.status().length_ms));
    EXPECT_FALSE(player.SeekMs(0xFFFFFFFF));

    player.TogglePause();
    EXPECT_EQ(player.status().state, PlayState::kPaused);
    const uint32_t resting = player.status().position_ms;
    EXPECT_GE(resting, 5900u);
    rig.RunFor(300);
    EXPECT_EQ(player.status().position_ms, resting);
    ASSERT_TRUE(player.SeekMs(1000));
    rig.RunFor(300);
    EXPECT_EQ(player.status().state, PlayState::kPaused) << "a seek does not end the pause";
    EXPECT_EQ(player.status().position_ms, 1000u);

    player.Play();
    ASSERT_TRUE(rig.RunUntil([&] { return player.status().position_ms > 1200; }));
    EXPECT_EQ(player.status().state, PlayState::kPlaying);
    ASSERT_TRUE(player.SeekMs(7000));
    player.Play();
    rig.RunFor(100);
    EXPECT_LT(player.status().position_ms, 6000u) << "playing, it begins anew";
    player.Stop();
    EXPECT_EQ(player.status().title, L"");
    EXPECT_EQ(player.status().position_ms, 0u);
  }
}

// All of the short file waits in the output soon after its start: the decoding thread only waits
// for the end, and a seek ends the thread.
TEST(Player, ASeekWhileTheLastBuffersPlayGoesOnThere) {
  for (const bool paused : {false, true}) {
    SCOPED_TRACE(paused);
    UseSink(L"silence", false);
    Rig rig;
    rig.player.Add({Media(L"tone_44100_mono.ogg"), Media(L"sample.ogg")});
    ASSERT_TRUE(rig.player.PlayTrack(0));
    ASSERT_TRUE(rig.RunUntil([&] { return rig.player.status().position_ms > 1200; }));
    if (paused) rig.player.TogglePause();
    ASSERT_TRUE(rig.player.SeekMs(1000));
    ASSERT_TRUE(rig.RunUntil([&] { return rig.ends == 1; }));
    EXPECT_EQ(rig.player.status().current, 0u) << "it has not ended for the user";
    EXPECT_GE(rig.player.status().position_ms, 1000u);
    EXPECT_EQ(rig.player.status().state, paused ? PlayState::kPaused : PlayState::kPlaying);
    if (paused) rig.player.TogglePause();
    ASSERT_TRUE(rig.RunUntil([&] { return rig.ends == 2; }));
    EXPECT_EQ(rig.player.status().current, 1u);
  }
}

TEST(Player, ChoosesWhileStoppedAndPlaysWhilePlaying) {
  UseSink(L"silence", false);
  Rig rig;
  Player& player = rig.player;
  player.Add({Media(L"sample.ogg"), Media(L"sample.wma"), Media(L"sample_v1.wma")});
  EXPECT_EQ(player.status().current, kNoTrack);
  player.Next();
  player.Next();
  EXPECT_EQ(player.status().state, PlayState::kStopped);
  EXPECT_EQ(player.status().current, 1u);
  player.Play();
  EXPECT_EQ(player.open_path().substr(player.open_path().size() - 4), L".wma");
  player.TogglePause();
  player.Previous();
  EXPECT_EQ(player.status().state, PlayState::kPlaying) << "another track is not paused";
  EXPECT_EQ(player.status().current, 0u);
  player.Previous();
  EXPECT_EQ(player.status().current, 0u) << "the first again";
  EXPECT_EQ(player.status().state, PlayState::kPlaying);

  player.Remove({0, 0, 7});
  EXPECT_EQ(player.status().state, PlayState::kPlaying) << "the music goes on";
  EXPECT_EQ(player.status().current, kNoTrack);
  EXPECT_EQ(player.tracks().size(), 2u);
  player.Move(1, 0);
  player.Next();
  EXPECT_EQ(player.status().current, 1u) << "the one that had followed";
  player.Clear();
  EXPECT_EQ(player.status().state, PlayState::kPlaying);
  player.Next();
  player.Stop();
  player.Play();
  EXPECT_EQ(player.status().state, PlayState::kStopped) << "nothing to play";
}

TEST(Player, AddsFilesAndFoldersAndLearnsAboutThem) {
  CreateDirectoryW(L"player_music", nullptr);
  CreateDirectoryW(L"player_music\\B", nullptr);
  for (const wchar_t* name : {L"b.OGG", L"a.wma", L"B\\c.ogg", L"note.txt"}) {
    WriteBytes(std::wstring(L"player_music\\") + name, "", 0);
  }
  Rig rig;
  rig.player.Add({L"player_music", Media(L"sample.ogg"), L"player_music\\note.txt", L"no folder"});
  std::wstring titles;
  for (const Track& track : rig.player.tracks()) {
    titles += track.title + L"|";
    EXPECT_EQ(track.path.substr(1, 2), L":\\");
  }
  EXPECT_EQ(titles, L"a|c|b|sample|");
  EXPECT_TRUE(rig.player.LearnNext());
  rig.player.Move(3, 0);
  int asked = 1;
  while (rig.player.LearnNext()) ++asked;
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(rig.player.tracks()[0].title, L"The Ring Buffers - Eight Bars");
  EXPECT_EQ(rig.player.tracks()[0].length_ms, 8000u);
}

TEST(Player, ManyTrackChangesLeaveNothingBehind) {
  UseSink(L"silence", false);
  Rig rig;
  rig.player.Add({Media(L"sample.ogg"), Media(L"tone_8000_mono.ogg")});
  rig.player.SetRepeat(true);
  rig.player.Play();
  const auto change = [&](int count) {
    for (int i = 0; i < count; ++i) {
      int16_t samples[kPictureSamples];
      rig.player.Next();
      rig.player.SeekMs(500);
      rig.RunFor(20);
      rig.player.Samples(samples);
    }
    rig.player.Stop();
  };
  change(30);  // fills caches of the system
  const kelvo::test::Owned before = kelvo::test::CountOwned();
  change(50);
  EXPECT_EQ(kelvo::test::Grown(before, 50), "");
}

}  // namespace
}  // namespace velmora
