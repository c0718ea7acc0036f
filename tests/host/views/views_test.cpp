// What the windows show, by where each pixel of a skin ends up.
#include <gtest/gtest.h>

#include "host/player/views/equalizer_view.h"
#include "host/player/views/main_view.h"
#include "host/player/views/playlist_view.h"
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

TEST(SliderTest, ThumbAndValueAgree) {
  for (const Slider& slider : {kVolumeSlider, kBalanceSlider, kPositionSlider, kGainSlider}) {
    EXPECT_EQ(slider.ThumbAt(0), slider.start);
    EXPECT_EQ(slider.ThumbAt(slider.most), slider.start + slider.length - slider.thumb);
    EXPECT_EQ(slider.ThumbAt(-5), slider.ThumbAt(0));
    EXPECT_EQ(slider.ThumbAt(slider.most + 5), slider.ThumbAt(slider.most));
    EXPECT_EQ(slider.ValueAt(-10000), 0);
    EXPECT_EQ(slider.ValueAt(10000), slider.most);
    // A thumb that is taken in its middle and let go stays where it is.
    for (int value = 0; value <= slider.most; ++value) {
      const int thumb = slider.ThumbAt(value);
      EXPECT_EQ(slider.ThumbAt(slider.ValueAt(thumb + slider.thumb / 2)), thumb);
    }
  }
  for (int value = 0; value <= kGainSlider.most; ++value) {
    EXPECT_EQ(kGainSlider.ValueAt(kGainSlider.ThumbAt(value) + 5), value) << "each can be reached";
  }
}

TEST(EqualizerViewTest, ShowsTheState) {
  EqualizerViewState state;
  const auto drawn = [&](Point at) {
    Canvas canvas(kEqualizerSize);
    DrawEqualizer(&canvas, TracedSkin(), state);
    return OriginOf(canvas, at);
  };
  EXPECT_EQ(drawn({14, 18}), (Origin{kSkinEqualizer, 10, 119}));
  EXPECT_EQ(drawn({40, 18}), (Origin{kSkinEqualizer, 36, 119}));
  EXPECT_EQ(drawn({217, 18}), (Origin{kSkinEqualizer, 224, 164}));
  EXPECT_EQ(drawn({0, 0}), (Origin{kSkinEqualizer, 0, 134}));
  EXPECT_EQ(drawn({78, 90}), (Origin{kSkinEqualizer, 13 + 15 * 13, 229 + 52}));
  EXPECT_EQ(drawn({22, 38}), (Origin{kSkinEqualizer, 0, 164})) << "the strongest boost is on top";
  state.on = state.bass = true;
  state.active = false;
  state.pressed = EqualizerControl::kSlider;
  state.pressed_slider = 10;
  state.sliders[10] = 27;
  state.sliders[9] = 14;
  EXPECT_EQ(drawn({14, 18}), (Origin{kSkinEqualizer, 69, 119}));
  EXPECT_EQ(drawn({40, 18}), (Origin{kSkinEqualizer, 95, 119}));
  EXPECT_EQ(drawn({0, 0}), (Origin{kSkinEqualizer, 0, 149}));
  EXPECT_EQ(drawn({240, 38}), (Origin{kSkinEqualizer, 13, 164}));
  EXPECT_EQ(drawn({241, 90}), (Origin{kSkinEqualizer, 0, 176}));
  EXPECT_EQ(drawn({222, 38}), (Origin{kSkinEqualizer, 13 + 15 * 13, 164}));
}

TEST(EqualizerViewTest, CurveHasNoGapsAndStaysInside) {
  EqualizerViewState state;
  state.sliders[0] = 27;  // its line is at the bottom
  for (int x = 0; x < kCurvePlace.width; ++x) state.curve[x] = x < 50 ? -1000 : 1000;
  Canvas canvas(kEqualizerSize);
  DrawEqualizer(&canvas, TracedSkin(), state);
  const auto row = [&](int x, int y) { return OriginOf(canvas, {86 + x, 17 + y}); };
  EXPECT_EQ(row(49, 0), (Origin{kSkinEqualizer, 115, 294}));
  EXPECT_EQ(row(49, 1), (Origin{kSkinEqualizer, 49, 295}));
  for (int y = 1; y < 19; ++y) EXPECT_EQ(row(50, y), (Origin{kSkinEqualizer, 115, 294 + y}));
  EXPECT_EQ(row(51, 17), (Origin{kSkinEqualizer, 51, 311}));
  EXPECT_EQ(row(10, 18), (Origin{kSkinEqualizer, 10, 314}));
  EXPECT_EQ(row(0, -1), (Origin{kSkinEqualizer, 86, 16}));
  EXPECT_EQ(row(112, 19), (Origin{kSkinEqualizer, 198, 36}));
}

TEST(EqualizerViewTest, Hits) {
  EXPECT_EQ(EqualizerHitAt({21, 38}).slider, 0);
  EXPECT_EQ(EqualizerHitAt({78, 38}).slider, 1);
  EXPECT_EQ(EqualizerHitAt({253, 100}).slider, 10);
  EXPECT_EQ(EqualizerHitAt({93, 60}).control, EqualizerControl::kNone) << "between sliders";
  EXPECT_EQ(EqualizerHitAt({264, 3}).control, EqualizerControl::kClose);
  EXPECT_EQ(EqualizerHitAt({217, 18}).control, EqualizerControl::kPresets);
}

// Marks the area that text would have.
class AreaPainter final : public TextPainter {
 public:
  int Width(std::u16string_view text) override { return static_cast<int>(text.size()) * 6; }
  void Draw(Canvas* canvas, Rect area, std::u16string_view, Colour colour) override {
    canvas->Fill(area, colour);
  }
};

TEST(PlaylistViewTest, PiecesAtEverySize) {
  AreaPainter painter;
  for (const Size size : {Size{275, 116}, Size{300, 145}, Size{525, 464}}) {
    PlaylistViewState state;
    state.size = size;
    state.first = state.last_first = 7;
    Canvas canvas(size);
    DrawPlaylist(&canvas, TracedSkin(), state, painter);
    const int right = size.width - 1;
    const int bottom = size.height - 1;
    EXPECT_EQ(OriginOf(canvas, {0, 0}), (Origin{kSkinPlaylist, 0, 0}));
    EXPECT_EQ(OriginOf(canvas, {right, 0}), (Origin{kSkinPlaylist, 177, 0}));
    EXPECT_EQ(OriginOf(canvas, {(size.width - 100) / 2, 0}), (Origin{kSkinPlaylist, 26, 0}));
    EXPECT_EQ(OriginOf(canvas, {0, 20}), (Origin{kSkinPlaylist, 0, 42}));
    EXPECT_EQ(OriginOf(canvas, {right, 20}), (Origin{kSkinPlaylist, 50, 42}));
    EXPECT_EQ(OriginOf(canvas, {0, bottom}), (Origin{kSkinPlaylist, 0, 109}));
    EXPECT_EQ(OriginOf(canvas, {right, bottom}), (Origin{kSkinPlaylist, 275, 109}));
    EXPECT_EQ(OriginOf(canvas, {right - 14, size.height - 38 - 1}), (Origin{kSkinPlaylist, 52, 70}))
        << "the scroll bar's thumb is at its end";
  }
}

TEST(PlaylistViewTest, RolledUp) {
  AreaPainter painter;
  PlaylistViewState state;
  state.size = {300, kPlaylistRolled};
  state.active = false;
  state.pressed = PlaylistControl::kShade;
  state.rolled_text = std::u16string(100, u'A');
  Canvas canvas(state.size);
  DrawPlaylist(&canvas, TracedSkin(), state, painter);
  EXPECT_EQ(OriginOf(canvas, {0, 0}), (Origin{kSkinPlaylist, 72, 42}));
  EXPECT_EQ(OriginOf(canvas, {299, 13}), (Origin{kSkinPlaylist, 148, 70}));
  EXPECT_EQ(OriginOf(canvas, {279, 3}), (Origin{kSkinPlaylist, 62, 42}));
  EXPECT_EQ(OriginOf(canvas, {5, 4}), (Origin{kSkinText, 0, 0}));
  EXPECT_EQ(OriginOf(canvas, {250, 5}), (Origin{kSkinPlaylist, 99, 62})) << "text ends before it";
  EXPECT_EQ(PlaylistControlAt(state.size, {290, 4}), PlaylistControl::kClose);
  EXPECT_EQ(PlaylistControlAt(state.size, {20, 13}), PlaylistControl::kTitleBar);
}

TEST(PlaylistViewTest, Rows) {
  AreaPainter painter;
  Skin skin = TracedSkin();
  skin.playlist = {1, 2, 3, 4, ""};
  PlaylistViewState state;
  state.rows = {{u"first", u"1:00", false, true}, {u"second", u"", true, false}};
  Canvas canvas(state.size);
  DrawPlaylist(&canvas, skin, state, painter);
  const auto at = [&](int x, int y) { return canvas.picture().At(x, y); };
  EXPECT_EQ(at(12, 20), 1u);
  EXPECT_EQ(at(254, 20), 1u) << "the time";
  EXPECT_EQ(at(229, 20), 4u) << "selected, between text and time";
  EXPECT_EQ(at(12, 33), 2u);
  EXPECT_EQ(at(12, 46), 3u) << "below the rows";
}

TEST(PlaylistLayoutTest, SizesRowsAndThumb) {
  const struct {
    Size wanted, want;
  } sizes[] = {
      {{0, 0}, {275, 116}},     {{-500, -500}, {275, 116}},  {{287, 130}, {275, 116}},
      {{288, 131}, {300, 145}}, {{1000, 1000}, {1000, 986}},
  };
  for (const auto& c : sizes) EXPECT_EQ(PlaylistSizeNear(c.wanted), c.want);
  EXPECT_EQ(PlaylistRows(kPlaylistLeast), 4);
  EXPECT_EQ(PlaylistRowAt(kPlaylistLeast, 20), 0);
  EXPECT_EQ(PlaylistRowAt(kPlaylistLeast, 33), 1);
  EXPECT_EQ(PlaylistRowAt(kPlaylistLeast, 19), -1);
  EXPECT_EQ(PlaylistRowAt(kPlaylistLeast, 6), -2);
  EXPECT_EQ(PlaylistThumbTop(kPlaylistLeast, 0, 0), 20);
  EXPECT_EQ(PlaylistThumbTop(kPlaylistLeast, 10, 10), 60);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 0, 10), 0);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 1000, 10), 10);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 1000, 0), 0);
}

TEST(PlaylistLayoutTest, Hits) {
  const Size size = {300, 145};
  EXPECT_EQ(PlaylistControlAt(size, {289, 3}), PlaylistControl::kClose);
  EXPECT_EQ(PlaylistControlAt(size, {100, 3}), PlaylistControl::kTitleBar);
  EXPECT_EQ(PlaylistControlAt(size, {12, 20}), PlaylistControl::kList);
  EXPECT_EQ(PlaylistControlAt(size, {279, 106}), PlaylistControl::kList);
  EXPECT_EQ(PlaylistControlAt(size, {285, 50}), PlaylistControl::kScrollBar);
  EXPECT_EQ(PlaylistControlAt(size, {14, 115}), PlaylistControl::kAddMenu);
  EXPECT_EQ(PlaylistControlAt(size, {275, 132}), PlaylistControl::kListMenu);
  EXPECT_EQ(PlaylistControlAt(size, {299, 144}), PlaylistControl::kSizeCorner);
  EXPECT_EQ(PlaylistControlAt(size, {5, 60}), PlaylistControl::kNone);
}

}  // namespace
}  // namespace velmora
