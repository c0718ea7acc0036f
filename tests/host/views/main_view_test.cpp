// What the main window shows, by where each pixel of a skin ends up.
#include <gtest/gtest.h>

#include "host/player/views/main_view.h"
#include "tests/host/views/traced_skin.h"

namespace velmora {
namespace {

using test::Origin;
using test::OriginOf;
using test::TracedSkin;
using namespace kelvo;

Canvas Main(const MainState& state, const Skin& skin = TracedSkin(),
            const Bitmap& song_text = Bitmap()) {
  Canvas canvas(kMainSize);
  DrawMain(&canvas, skin, state, song_text);
  return canvas;
}

TEST(MainViewTest, ShowsTheState) {
  const struct {
    const char* name;
    void (*set)(MainState*);
    Point at;
    Origin want;
  } cases[] = {
      {"the ground", [](MainState*) {}, {5, 80}, {kSkinMain, 5, 80}},
      {"title, active", [](MainState*) {}, {100, 0}, {kSkinTitleBar, 127, 0}},
      {"title, inactive",
       [](MainState* s) { s->active = false; },
       {100, 0},
       {kSkinTitleBar, 127, 15}},
      {"title, rolled up",
       [](MainState* s) { s->rolled = true; },
       {100, 0},
       {kSkinTitleBar, 127, 29}},
      {"shade, rolled up",
       [](MainState* s) { s->rolled = true; },
       {254, 3},
       {kSkinTitleBar, 0, 27}},
      {"close", [](MainState*) {}, {264, 3}, {kSkinTitleBar, 18, 0}},
      {"close, pressed",
       [](MainState* s) { s->pressed = MainControl::kClose; },
       {264, 3},
       {kSkinTitleBar, 18, 9}},
      {"play", [](MainState*) {}, {39, 88}, {kSkinButtons, 23, 0}},
      {"play, pressed",
       [](MainState* s) { s->pressed = MainControl::kPlay; },
       {39, 88},
       {kSkinButtons, 23, 18}},
      {"another one pressed",
       [](MainState* s) { s->pressed = MainControl::kStop; },
       {39, 88},
       {kSkinButtons, 23, 0}},
      {"eject, pressed",
       [](MainState* s) { s->pressed = MainControl::kEject; },
       {136, 89},
       {kSkinButtons, 114, 16}},
      {"shuffle", [](MainState*) {}, {164, 89}, {kSkinShuffleRepeat, 28, 0}},
      {"shuffle, on",
       [](MainState* s) { s->shuffle = true; },
       {164, 89},
       {kSkinShuffleRepeat, 28, 30}},
      {"repeat, on, pressed",
       [](MainState* s) { s->repeat = true, s->pressed = MainControl::kRepeat; },
       {211, 89},
       {kSkinShuffleRepeat, 1, 45}},
      {"playlist, on, pressed",
       [](MainState* s) { s->playlist_open = true, s->pressed = MainControl::kPlaylist; },
       {242, 58},
       {kSkinShuffleRepeat, 69, 73}},
      {"stopped", [](MainState*) {}, {26, 28}, {kSkinPlayPause, 18, 0}},
      {"playing",
       [](MainState* s) { s->sign = PlaySign::kPlaying; },
       {28, 28},
       {kSkinPlayPause, 2, 0}},
      {"paused",
       [](MainState* s) { s->sign = PlaySign::kPaused; },
       {26, 28},
       {kSkinPlayPause, 9, 0}},
      {"mono", [](MainState* s) { s->channels = 1; }, {212, 41}, {kSkinMonoStereo, 29, 0}},
      {"mono is not stereo",
       [](MainState* s) { s->channels = 1; },
       {239, 41},
       {kSkinMonoStereo, 0, 12}},
      {"stereo", [](MainState* s) { s->channels = 2; }, {239, 41}, {kSkinMonoStereo, 0, 0}},
      {"bit rate, one letter",
       [](MainState* s) { s->bit_rate = 8; },
       {121, 43},
       {kSkinText, 40, 6}},
      {"bit rate, too high",
       [](MainState* s) { s->bit_rate = 1411; },
       {111, 43},
       {kSkinText, 45, 6}},
      {"sample rate", [](MainState* s) { s->sample_rate = 44; }, {156, 43}, {kSkinText, 20, 6}},
      {"volume 0", [](MainState*) {}, {130, 57}, {kSkinVolume, 23, 0}},
      {"volume 0, thumb", [](MainState*) {}, {107, 58}, {kSkinVolume, 15, 422}},
      {"volume 100", [](MainState* s) { s->volume = 100; }, {107, 57}, {kSkinVolume, 0, 405}},
      {"volume 100, thumb",
       [](MainState* s) { s->volume = 100; },
       {174, 58},
       {kSkinVolume, 28, 422}},
      {"volume, thumb pressed",
       [](MainState* s) { s->pressed = MainControl::kVolume; },
       {107, 58},
       {kSkinVolume, 0, 422}},
      {"balance middle", [](MainState*) {}, {177, 57}, {kSkinBalance, 9, 0}},
      {"balance left", [](MainState* s) { s->balance = -100; }, {200, 57}, {kSkinBalance, 32, 405}},
      {"balance left, thumb",
       [](MainState* s) { s->balance = -100; },
       {177, 58},
       {kSkinBalance, 15, 422}},
      {"no position", [](MainState*) {}, {16, 72}, {kSkinPositionBar, 0, 0}},
      {"position 0", [](MainState* s) { s->position = 0; }, {16, 72}, {kSkinPositionBar, 248, 0}},
      {"position at the end, pressed",
       [](MainState* s) { s->position = 1000, s->pressed = MainControl::kPosition; },
       {263, 72},
       {kSkinPositionBar, 306, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    MainState state;
    c.set(&state);
    EXPECT_EQ(OriginOf(Main(state), c.at), c.want);
  }
}

TEST(MainViewTest, Time) {
  constexpr int kBlank = 10;
  const struct {
    int seconds;
    int digits[4];
  } cases[] = {
      {-1, {kBlank, kBlank, kBlank, kBlank}},
      {0, {0, 0, 0, 0}},
      {9, {0, 0, 0, 9}},
      {60, {0, 1, 0, 0}},
      {5999, {9, 9, 5, 9}},
      {6000, {0, 1, 4, 0}},
      {2147483647, {2, 3, 1, 4}},  // 596523 hours, of which the last two digits
  };
  for (const auto& c : cases) {
    MainState state;
    state.time_s = c.seconds;
    state.remaining = true;
    const Canvas canvas = Main(state);
    for (int i = 0; i < 4; ++i) {
      constexpr int kColumns[] = {48, 60, 78, 90};
      EXPECT_EQ(OriginOf(canvas, {kColumns[i], 26}), (Origin{kSkinNumbersEx, c.digits[i] * 9, 0}))
          << c.seconds << " digit " << i;
    }
    const int sign = c.seconds >= 0 ? 99 : 90;
    EXPECT_EQ(OriginOf(canvas, {36, 26}), (Origin{kSkinNumbersEx, sign, 0})) << c.seconds;
  }
}

TEST(MainViewTest, OldDigitsBorrowTheirMinus) {
  MainState state;
  state.time_s = 1;
  const Skin& skin = TracedSkin(false);
  EXPECT_EQ(OriginOf(Main(state, skin), {40, 32}), (Origin{kSkinMain, 40, 32}));
  state.remaining = true;
  EXPECT_EQ(OriginOf(Main(state, skin), {40, 32}), (Origin{kSkinNumbers, 20, 6}));
  EXPECT_EQ(OriginOf(Main(state, skin), {90, 26}), (Origin{kSkinNumbers, 9, 0}));
}

TEST(MainViewTest, LongSongTextScrollsRound) {
  Bitmap text(200, 6);
  for (int x = 0; x < text.width; ++x) {
    for (int y = 0; y < text.height; ++y) text.Row(y)[x] = 0x800000u + static_cast<Colour>(x);
  }
  const auto shown = [&](int scroll, int x) {
    MainState state;
    state.scroll = scroll;
    const Canvas canvas = Main(state, TracedSkin(), text);
    return static_cast<int>(canvas.picture().At(111 + x, 27) - 0x800000u);
  };
  EXPECT_EQ(shown(0, 0), 0);
  EXPECT_EQ(shown(0, 153), 153);
  EXPECT_EQ(shown(60, 139), 199);
  EXPECT_EQ(shown(60, 140), 0);
  EXPECT_EQ(shown(200 * 1000 + 1, 0), 1);
  MainState state;
  EXPECT_EQ(OriginOf(Main(state, TracedSkin(), text), {265, 27}), (Origin{kSkinMain, 265, 27}));
}

TEST(MainViewTest, VisualInTheSkinsColours) {
  const auto colour = [](const MainState& state, int x, int y) {
    return static_cast<int>(Main(state).picture().At(24 + x, 43 + y) - 0xFF0000u);
  };
  MainState state;
  EXPECT_EQ(OriginOf(Main(state), {24, 43}), (Origin{kSkinMain, 24, 43})) << "off";
  state.visual.mode = VisualMode::kSpectrum;
  state.visual.bars[0] = 15;
  state.visual.bars[18] = 1;
  state.visual.peaks[18] = 200;  // more than there is
  EXPECT_EQ(colour(state, 0, 0), kVisualSpectrumTop);
  EXPECT_EQ(colour(state, 2, 15), 17);
  EXPECT_EQ(colour(state, 3, 15), kVisualBackground);
  EXPECT_EQ(colour(state, 4, 1), kVisualDots);
  EXPECT_EQ(colour(state, 72, 13), kVisualDots) << "above the bar";
  EXPECT_EQ(colour(state, 72, 14), 16);
  EXPECT_EQ(colour(state, 72, 0), kVisualPeaks);
  EXPECT_EQ(OriginOf(Main(state), {100, 43}), (Origin{kSkinMain, 100, 43})) << "not beyond";
  state.visual.mode = VisualMode::kWave;
  for (auto& height : state.visual.wave) height = 8;
  state.visual.wave[75] = 15;
  EXPECT_EQ(colour(state, 0, 7), kVisualWaveMiddle);
  EXPECT_EQ(colour(state, 75, 0), kVisualWaveLoudest);
  EXPECT_EQ(colour(state, 75, 7), kVisualWaveLoudest) << "joined with the point before";
}

TEST(MainViewTest, HitsMatchThePictures) {
  const struct {
    Point at;
    MainControl want;
  } cases[] = {
      {{6, 3}, MainControl::kMenu},        {{14, 11}, MainControl::kMenu},
      {{15, 11}, MainControl::kTitleBar},  {{272, 11}, MainControl::kClose},
      {{16, 88}, MainControl::kPrevious},  {{129, 105}, MainControl::kNext},
      {{130, 105}, MainControl::kNone},    {{107, 57}, MainControl::kVolume},
      {{174, 69}, MainControl::kVolume},   {{214, 57}, MainControl::kBalance},
      {{263, 81}, MainControl::kPosition}, {{60, 50}, MainControl::kVisual},
      {{50, 30}, MainControl::kTime},      {{219, 58}, MainControl::kEqualizer},
      {{-1, -1}, MainControl::kNone},      {{275, 116}, MainControl::kNone},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MainControlAt(c.at), c.want) << c.at.x << "," << c.at.y;
  }
}

}  // namespace
}  // namespace velmora
