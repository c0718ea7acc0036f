// Whatever lies in the skin's folder or in the file of the settings: the player starts, with what
// it has for a first start, plays, and leaves in good order.
#include <gtest/gtest.h>
#include <string.h>

#include <random>

#include "host/player/session.h"
#include "tests/player/program/expected_sound.h"
#include "tests/player/program/recordings.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

constexpr char kMedia[] = "tone_8000_stereo.ogg";

class ProgramHostile : public testing::Test {
 protected:
  ProgramHostile() : recordings_(installed_, true) {
    const std::vector<char> pcm = kelvo::test::DecodeDirectly(kelvo::test::ReadMedia(kMedia));
    sound_.resize(pcm.size() / 2);
    memcpy(sound_.data(), pcm.data(), pcm.size());
  }

  // Starts with this file of settings and plays something. The size of the main window is that of
  // `scale`; its sound is untouched.
  void StartPlayAndQuit(const std::string& session, int scale = 1) {
    recordings_.Delete();
    installed_.folder().Write(L"velmora.session", session);
    PlayerProcess player;
    ASSERT_TRUE(player.Start(installed_, L"..\\..\\media\\tone_8000_stereo.ogg"));
    ASSERT_TRUE(recordings_.WaitForSamples(player, 1, sound_.size()));
    ASSERT_TRUE(player.WaitUntilStopped());
    RECT place;
    GetWindowRect(player.main(), &place);
    EXPECT_EQ(place.right - place.left, 275 * scale);
    EXPECT_EQ(place.bottom - place.top, 116 * scale);
    EXPECT_TRUE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL)) << "nobody can reach it";
    const int x = 268 * scale, y = 7 * scale;
    ASSERT_TRUE(player.Quit({x, y}));
    EXPECT_TRUE(recordings_.Read(1) == sound_);
    const Session kept = ParseSession(installed_.folder().Read(L"velmora.session"));
    EXPECT_EQ(kept.tracks.size(), 1u);
    EXPECT_GT(kept.main_window.width, 0);
  }

  Installed installed_;
  Recordings recordings_;
  Samples sound_;
};

std::string RandomBytes(size_t count, uint32_t seed) {
  std::mt19937 random(seed);
  std::string bytes(count, '\0');
  for (char& c : bytes) c = static_cast<char>(random());
  return bytes;
}

TEST_F(ProgramHostile, Settings) {
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
      {"a skin that is no skin", "skin=" + kelvo::test::Utf8(installed_.folder().path().c_str())},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    StartPlayAndQuit(c.text, c.scale);
    if (HasFatalFailure()) return;
  }
}

class ProgramHostileSkin : public ProgramHostile {
 protected:
  // Puts the default skin's files into a folder, each changed by `change`.
  template <class Change>
  void TrySkin(const wchar_t* name, Change change) {
    const std::wstring folder = installed_.Path(name);
    CreateDirectoryW(folder.c_str(), nullptr);
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(installed_.Path(L"skins\\default\\*.*").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    do {
      if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
      std::string bytes =
          installed_.folder().Read(std::wstring(L"skins\\default\\") + found.cFileName);
      if (change(&bytes)) {
        installed_.folder().Write(std::wstring(name) + L"\\" + found.cFileName, bytes);
      }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    SCOPED_TRACE(kelvo::test::Utf8(name));
    StartPlayAndQuit("skin=" + kelvo::test::Utf8(folder.c_str()) + "\n");
  }
};

TEST_F(ProgramHostileSkin, Folders) {
  constexpr size_t kWidth = 18, kHeight = 22, kBits = 28;  // in a bitmap's header
  const auto put = [](std::string* bytes, size_t at, int32_t value) {
    if (at + 4 <= bytes->size()) memcpy(&(*bytes)[at], &value, 4);
    return true;
  };
  uint32_t seed = 0;
  int number = 0;
  TrySkin(L"truncated", [&](std::string* b) { return b->resize(b->size() * 2 / 3), true; });
  TrySkin(L"only headers", [&](std::string* b) { return b->resize(54), true; });
  TrySkin(L"empty files", [&](std::string* b) { return b->clear(), true; });
  TrySkin(L"every second", [&](std::string*) { return ++number % 2 == 0; });
  TrySkin(L"huge",
          [&](std::string* b) { return put(b, kWidth, 0x7FFFFFFF), put(b, kHeight, 0x7FFFFFFF); });
  TrySkin(L"wide", [&](std::string* b) { return put(b, kWidth, 1 << 24); });
  TrySkin(L"upside down", [&](std::string* b) { return put(b, kHeight, INT32_MIN); });
  TrySkin(L"one pixel", [&](std::string* b) { return put(b, kWidth, 1), put(b, kHeight, 1); });
  TrySkin(L"no colours", [&](std::string* b) { return put(b, kBits, 0x10003); });
  TrySkin(L"noise", [&](std::string* b) { return *b = RandomBytes(b->size(), ++seed), true; });
}

}  // namespace
}  // namespace velmora::test
