// The player as its user sees it.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <iterator>

#include "host/player/settings.h"
#include "tests/host/views/bmp_builder.h"
#include "tests/host/windows/player_driver.h"
#include "tests/support/owned_objects.h"

namespace velmora {
namespace {

using test::Media;
using test::Place;
using test::PlayerDriver;
using test::Shows;
using test::WaitFor;

constexpr wchar_t kSession[] = L"player_window_test.session";

std::string SessionText() {
  std::ifstream file("player_window_test.session", std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class PlayerWindowTest : public testing::Test {
 protected:
  PlayerWindowTest() {
    DeleteFileW(kSession);
    test::UseSink(L"silence", false);
    Open({Media(L"sample.ogg"), Media(L"tone_44100_mono.ogg"), Media(L"tone_8000_stereo.ogg")});
    EXPECT_TRUE(WaitFor([&] { return Playing() && Current() == 0; }));
  }

  void Open(const std::vector<std::wstring>& files) {
    player_.emplace(PlayerOptions{files, L"", kSession});
  }
  bool Shown(HWND window, Rect place, kelvo::SkinFile file, Point from) const {
    return WaitFor([&] { return Shows(player_->Picture(window), place, skin_.image(file), from); });
  }
  bool MainShows(Rect place, kelvo::SkinFile file, Point from) const {
    return Shown(player_->main(), place, file, from);
  }
  bool Playing() const { return MainShows({26, 28, 9, 9}, kelvo::kSkinPlayPause, {0, 0}); }
  bool Paused() const { return MainShows({26, 28, 9, 9}, kelvo::kSkinPlayPause, {9, 0}); }
  bool Stopped() const { return MainShows({26, 28, 9, 9}, kelvo::kSkinPlayPause, {18, 0}); }
  // The last digit of the time; 10: none.
  int LastDigit() const {
    const Bitmap picture = player_->Picture(player_->main());
    for (int digit = 0; digit <= 10; ++digit) {
      if (Shows(picture, {90, 26, 9, 13}, skin_.image(kelvo::kSkinNumbersEx), {digit * 9, 0})) {
        return digit;
      }
    }
    return -1;
  }
  // The current track's place in the list, from 0; -1: it is not in it.
  int Current() const { return atoi(player_->Title().c_str()) - 1; }
  bool RowSelected(int row) const {
    return player_->Picture(player_->playlist()).At(200, 20 + 13 * row) == skin_.playlist.selected;
  }
  // A row of the list, behind its number.
  Bitmap RowText(int row) const {
    Canvas text({150, 13});
    text.Draw(player_->Picture(player_->playlist()), {28, 20 + 13 * row, 150, 13}, {0, 0});
    return text.picture();
  }

  const Skin skin_ = DefaultSkin(test::TheLibrary());
  std::optional<PlayerDriver> player_;
};

constexpr Point kPlay = {50, 97};
constexpr Point kPause = {73, 97};
constexpr Point kStop = {96, 97};
constexpr Point kNext = {118, 97};

TEST_F(PlayerWindowTest, TransportFollowsTheButtons) {
  EXPECT_TRUE(WaitFor([&] { return LastDigit() == 1; }));
  EXPECT_TRUE(MainShows({239, 41, 29, 12}, kelvo::kSkinMonoStereo, {0, 0}));

  player_->Press(player_->main(), kPause);
  EXPECT_TRUE(MainShows({62, 88, 23, 18}, kelvo::kSkinButtons, {46, 18}));
  player_->MoveTo(player_->main(), {73, 60});
  EXPECT_TRUE(MainShows({62, 88, 23, 18}, kelvo::kSkinButtons, {46, 0})) << "away from it";
  player_->Release(player_->main(), {73, 60});
  EXPECT_TRUE(Playing());
  player_->Click(player_->main(), kPause);
  EXPECT_TRUE(Paused());
  EXPECT_TRUE(MainShows({62, 88, 23, 18}, kelvo::kSkinButtons, {46, 0}));

  player_->Click(player_->main(), kStop);
  EXPECT_TRUE(Stopped());
  EXPECT_EQ(LastDigit(), 10);
  EXPECT_TRUE(MainShows({16, 72, 248, 10}, kelvo::kSkinPositionBar, {0, 0}));

  player_->Click(player_->main(), kPlay);
  EXPECT_TRUE(Playing());
  player_->Click(player_->main(), kNext);
  EXPECT_TRUE(MainShows({212, 41, 27, 12}, kelvo::kSkinMonoStereo, {29, 0})) << "mono";
}

TEST_F(PlayerWindowTest, KeysWorkInEveryWindow) {
  for (HWND window : {player_->main(), player_->equalizer(), player_->playlist()}) {
    player_->Key(window, 'V');
    EXPECT_TRUE(Stopped());
    player_->Key(window, 'X');
    EXPECT_TRUE(Playing());
    player_->Key(window, VK_SPACE);
    EXPECT_TRUE(Paused());
  }
  player_->Key(player_->equalizer(), VK_DOWN);
  EXPECT_TRUE(MainShows({107, 57, 20, 13}, kelvo::kSkinVolume, {0, 25 * 15})) << "96 of 100";
  player_->Key(player_->main(), 'S');
  EXPECT_TRUE(MainShows({164, 89, 46, 15}, kelvo::kSkinShuffleRepeat, {28, 30}));
}

TEST_F(PlayerWindowTest, Sliders) {
  player_->Press(player_->main(), {114, 63});
  EXPECT_TRUE(MainShows({107, 58, 14, 11}, kelvo::kSkinVolume, {0, 422}));
  player_->Release(player_->main(), {114, 63});
  EXPECT_TRUE(MainShows({107, 58, 14, 11}, kelvo::kSkinVolume, {15, 422}));
  player_->Drag(player_->main(), {114, 63}, {141, 63});
  EXPECT_TRUE(MainShows({107, 57, 20, 13}, kelvo::kSkinVolume, {0, 13 * 15})) << "half";
  player_->Wheel(player_->main(), 1);
  player_->Drag(player_->main(), {196, 63}, {10, 63});
  EXPECT_TRUE(MainShows({177, 58, 14, 11}, kelvo::kSkinBalance, {15, 422}));

  player_->Drag(player_->main(), {50, 77}, {200, 77});  // 8 seconds, to 6.4
  EXPECT_TRUE(WaitFor([&] { return LastDigit() >= 6; }));
  player_->Click(player_->main(), {70, 32});
  EXPECT_TRUE(WaitFor([&] { return LastDigit() <= 1; }));
  EXPECT_TRUE(MainShows({36, 26, 9, 13}, kelvo::kSkinNumbersEx, {99, 0})) << "minus";

  player_->Leave();
  EXPECT_NE(SessionText().find("volume=54\n"), std::string::npos) << SessionText();
  EXPECT_NE(SessionText().find("balance=-100\n"), std::string::npos) << SessionText();
}

TEST_F(PlayerWindowTest, Equalizer) {
  constexpr auto kSheet = kelvo::kSkinEqualizer;
  const HWND window = player_->equalizer();
  const Bitmap flat = player_->Picture(window);
  player_->Drag(window, {85, 70}, {85, 40});  // 60 Hz to its top
  player_->Click(window, {27, 24});
  EXPECT_TRUE(Shown(window, {79, 38, 11, 11}, kSheet, {0, 164}));
  EXPECT_TRUE(Shown(window, {14, 18, 26, 12}, kSheet, {69, 119}));
  const Bitmap boosted = player_->Picture(window);
  // The line of the curve's left part has moved up.
  const Colour line = skin_.image(kSheet).At(115, 294 + 9);
  EXPECT_EQ(flat.At(88, 26), line);
  EXPECT_NE(boosted.At(88, 26), line);
  player_->DoubleClick(window, {85, 70});
  player_->Click(window, {56, 24});  // bass
  player_->Leave();
  EXPECT_NE(SessionText().find("bass=1\n"), std::string::npos) << SessionText();
}

TEST_F(PlayerWindowTest, PlaylistWithTheMouseAndKeys) {
  const HWND list = player_->playlist();
  player_->Click(list, {60, 40});
  EXPECT_TRUE(RowSelected(1));
  EXPECT_FALSE(RowSelected(0));
  player_->DoubleClick(list, {60, 53});
  EXPECT_TRUE(WaitFor([&] { return Current() == 2; }));

  const Bitmap third = RowText(2);
  player_->Drag(list, {60, 53}, {60, 25});
  EXPECT_TRUE(WaitFor([&] { return Current() == 0; }));
  EXPECT_EQ(RowText(0), third);

  player_->Click(list, {60, 40});
  player_->Key(list, VK_DELETE);
  player_->Key(list, VK_END);
  EXPECT_TRUE(WaitFor([&] { return RowSelected(1); }));
  EXPECT_EQ(Current(), 0);
  player_->Key(list, VK_RETURN);
  EXPECT_TRUE(WaitFor([&] { return Current() == 1 && !(RowText(0) == third); }))
      << "the colour of the current one is the next row's";
  player_->Leave();
  const std::string kept = SessionText();
  EXPECT_EQ(kept.find("sample.ogg"), std::string::npos);
  EXPECT_LT(kept.find("tone_8000_stereo.ogg"), kept.find("tone_44100_mono.ogg"));
}

TEST_F(PlayerWindowTest, TheListTakesWhatIsDroppedOnIt) {
  const HWND list = player_->playlist();
  player_->Drop(list, {Media(L"sample.ogg"), Media(L"tone_8000_stereo.ogg")});
  EXPECT_EQ(Current(), 0) << "what plays goes on";
  player_->Click(list, {60, 75});
  player_->Key(list, VK_DELETE);
  EXPECT_FALSE(RowSelected(3)) << "there is no row in the strip below the fourth";
  const Bitmap first = RowText(0);
  player_->Key(list, VK_END);
  EXPECT_TRUE(WaitFor([&] { return RowSelected(3) && !(RowText(0) == first); }));
  player_->Click(list, {60, 40});
  EXPECT_TRUE(RowSelected(1));
  player_->Drop(player_->main(), {Media(L"tone_44100_mono.ogg"), Media(L"tone_8000_stereo.ogg")});
  EXPECT_FALSE(RowSelected(1)) << "it is another list";
  EXPECT_EQ(Current(), 0) << "from its start";
  player_->Drop(list, {Media(L"sample.wma")});
  SetForegroundWindow(list);  // as its windows go, the main one becomes active and draws itself
  player_->Leave();
  const std::string kept = SessionText();
  EXPECT_EQ(kept.find("sample.ogg"), std::string::npos) << kept;
  EXPECT_LT(kept.find("tone_44100_mono.ogg"), kept.find("sample.wma")) << kept;
}

TEST_F(PlayerWindowTest, ADialogIsToBeAnsweredFirst) {
  player_->Start(kCommandAbout);
  const HWND dialog = player_->user().WaitForWindow(L"About Velmora");
  for (HWND window : {player_->main(), player_->equalizer(), player_->playlist()}) {
    EXPECT_FALSE(IsWindowEnabled(window));
  }
  player_->Command(kCommandPlaylistWindow);
  EXPECT_TRUE(IsWindowVisible(player_->playlist()));
  player_->user().Answer(dialog, IDOK);
  EXPECT_TRUE(IsWindowEnabled(player_->playlist()));
  player_->Command(kCommandPlaylistWindow);
  EXPECT_FALSE(IsWindowVisible(player_->playlist()));
}

TEST_F(PlayerWindowTest, WindowsStickTogether) {
  const auto below = [](HWND upper, HWND lower) {
    const RECT a = Place(upper);
    const RECT b = Place(lower);
    return a.left == b.left && a.bottom == b.top;
  };
  ASSERT_TRUE(below(player_->main(), player_->equalizer()));
  ASSERT_TRUE(below(player_->equalizer(), player_->playlist()));
  const RECT before = Place(player_->main());
  player_->Drag(player_->main(), {130, 5}, {230, 65});
  EXPECT_EQ(Place(player_->main()).left, before.left + 100);
  EXPECT_TRUE(below(player_->main(), player_->equalizer()));
  EXPECT_TRUE(below(player_->equalizer(), player_->playlist()));

  player_->Drag(player_->playlist(), {130, 5}, {330, 55});
  EXPECT_FALSE(below(player_->equalizer(), player_->playlist()));
  player_->Drag(player_->playlist(), {130, 5}, {130 - 195, 5 - 45});
  EXPECT_TRUE(below(player_->equalizer(), player_->playlist())) << "snaps";

  player_->Command(kCommandDoubleSize);
  EXPECT_EQ(Place(player_->main()).right - Place(player_->main()).left, 550);
  EXPECT_TRUE(below(player_->main(), player_->equalizer()));
  EXPECT_TRUE(below(player_->equalizer(), player_->playlist()));
  EXPECT_TRUE(MainShows({16, 88, 23, 18}, kelvo::kSkinButtons, {0, 0}));
  player_->DoubleClick(player_->main(), {130, 5});
  EXPECT_EQ(Place(player_->main()).bottom - Place(player_->main()).top, 28);
  EXPECT_TRUE(below(player_->main(), player_->equalizer()));
}

TEST_F(PlayerWindowTest, DroppedSkinsArePutOnFileByFile) {
  // A skin that has but a main window, all green, in a bitmap smaller than the window.
  CreateDirectoryW(L"player_window_test.skin", nullptr);
  {
    std::ofstream file("player_window_test.skin/main.bmp", std::ios::binary);
    test::BmpBuilder bmp;
    bmp.width = 8;
    bmp.height = 50;
    for (int i = 0; i < 8 * 50; ++i) bmp.pixels += std::string("\0\xFF\0", 3);
    file << bmp.Build();
  }
  wchar_t skin[MAX_PATH];
  GetFullPathNameW(L"player_window_test.skin", MAX_PATH, skin, nullptr);
  player_->Drop(player_->playlist(), {skin});
  EXPECT_TRUE(Playing()) << "the list stays";
  const Bitmap picture = player_->Picture(player_->main());
  EXPECT_EQ(picture.At(5, 40), 0x00FF00u);
  EXPECT_EQ(picture.At(9, 40), 0u) << "beyond the bitmap";
  EXPECT_TRUE(MainShows({16, 88, 23, 18}, kelvo::kSkinButtons, {0, 0})) << "the default's";

  player_->Drop(player_->main(), {Media(L"tone_44100_mono.ogg")});
  EXPECT_TRUE(Playing());
  player_->Leave();
  const std::string kept = SessionText();
  EXPECT_NE(kept.find("player_window_test.skin\n"), std::string::npos) << kept;
  EXPECT_EQ(kept.find("sample.ogg"), std::string::npos) << kept;
}

TEST_F(PlayerWindowTest, ClickingAboutLeavesNothingBehind) {
  const auto owned = [&] {
    kelvo::test::Owned now = {};
    player_->user().Run([&] { now = kelvo::test::CountOwned(); });
    return now;
  };
  const auto click = [&](int rounds) {
    for (int i = 0; i < rounds; ++i) {
      player_->Click(player_->equalizer(), {27, 24});
      for (const int command : std::initializer_list<int>{
               kCommandNext, kCommandVisualNext, kCommandDoubleSize, kCommandPlaylistWindow,
               kCommandDoubleSize, kCommandPlaylistWindow, kCommandShade, kCommandSkin,
               kCommandShade}) {
        player_->Command(command);
      }
    }
  };
  click(5);
  const kelvo::test::Owned before = owned();
  click(20);
  const kelvo::test::Owned after = owned();
  EXPECT_LE(after.gdi, before.gdi + 10);
  EXPECT_LE(after.user, before.user + 10);
}

TEST_F(PlayerWindowTest, TheNextStartLooksTheSame) {
  player_->Click(player_->main(), {230, 64});  // closes the equalizer
  EXPECT_FALSE(IsWindowVisible(player_->equalizer()));
  player_->Drag(player_->main(), {130, 5}, {200, 45});
  player_->Command(kCommandDoubleSize);
  const RECT main = Place(player_->main());
  const RECT list = Place(player_->playlist());
  player_->Leave();
  Open({Media(L"sample.ogg")});
  EXPECT_FALSE(IsWindowVisible(player_->equalizer()));
  EXPECT_TRUE(IsWindowVisible(player_->playlist()));
  const RECT main_again = Place(player_->main());
  const RECT list_again = Place(player_->playlist());
  EXPECT_TRUE(EqualRect(&main, &main_again));
  EXPECT_TRUE(EqualRect(&list, &list_again));
}

}  // namespace
}  // namespace velmora
