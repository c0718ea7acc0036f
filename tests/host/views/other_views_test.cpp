// What the equalizer and the playlist show, by where each pixel of a skin ends up.
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
