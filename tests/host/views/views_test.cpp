// What each window shows and what lies under the mouse, pixel by pixel: views.txt holds it as the
// rectangles that come from the skin's bitmaps, and for most states only those that differ from the
// state before them. When a change is meant, copy what this test has written over views.txt.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "host/player/views/equalizer_view.h"
#include "host/player/views/main_view.h"
#include "host/player/views/playlist_view.h"

namespace velmora {
namespace {

constexpr int kSongText = 20;  // beside the numbers of skin files

// A pixel that tells where it comes from.
constexpr Colour Traced(int file, int x, int y) {
  return static_cast<Colour>(file << 18 | y << 9 | x);
}

Bitmap TracedBitmap(int file, int width, int height) {
  Bitmap image(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.Row(y)[x] = Traced(file, x, y);
  }
  return image;
}

Skin TracedSkin() {
  Skin skin;
  for (int file = kelvo::kSkinBalance; file <= kelvo::kSkinVolume; ++file) {
    skin.images[file] = TracedBitmap(file, 344, 440);
  }
  for (int i = 0; i < kVisualColours; ++i) skin.visual_colours[i] = 0xFF0000u + Colour(i);
  skin.playlist = {1, 2, 3, 4, ""};
  return skin;
}

int FileOf(Colour colour) {
  const int file = static_cast<int>(colour >> 18);
  return file <= kSongText ? file : 0;
}

// Colours that follow one another in a bitmap, or one colour again.
bool GoesOn(Colour first, Colour next, int right, int down) {
  return next == first + (FileOf(first) ? static_cast<Colour>(right + down * 512) : 0);
}

// Draws the views' states into a text.
class Gallery {
 public:
  // A picture, or what is other in it than in the last whole one.
  void Show(const std::string& name, const Bitmap& picture, bool whole = false) {
    text_ << "[" << name << "]\n";
    if (whole || picture.width != base_.width || picture.height != base_.height) {
      base_ = Bitmap(picture.width, picture.height, 0xFFFFFFFF);
      Describe(picture);
      base_ = picture;
    } else {
      Describe(picture);
    }
  }
  std::string text() const { return text_.str(); }

 private:
  void Describe(const Bitmap& picture) {
    std::vector<bool> done(picture.pixels.size());
    const auto open = [&](int x, int y) {
      return x < picture.width && y < picture.height &&
             !done[static_cast<size_t>(y * picture.width + x)] &&
             picture.At(x, y) != base_.At(x, y);
    };
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        if (!open(x, y)) continue;
        const Colour first = picture.At(x, y);
        const auto fits = [&](int right, int down) {
          return open(x + right, y + down) &&
                 GoesOn(first, picture.At(x + right, y + down), right, down);
        };
        int width = 1, height = 1;
        while (fits(width, 0)) ++width;
        const auto row_fits = [&] {
          for (int i = 0; i < width; ++i) {
            if (!fits(i, height)) return false;
          }
          return true;
        };
        while (row_fits()) ++height;
        for (int i = 0; i < width * height; ++i) {
          done[static_cast<size_t>((y + i / width) * picture.width + x + i % width)] = true;
        }
        text_ << x << "," << y << " " << width << "x" << height << " ";
        if (const int file = FileOf(first)) {
          const char* const name = kelvo::SkinFileName(file);
          text_ << (name ? name : "song text") << " " << (first & 511) << "," << (first >> 9 & 511)
                << "\n";
        } else {
          text_ << "colour " << std::hex << first << std::dec << "\n";
        }
      }
    }
  }

  Bitmap base_;
  std::ostringstream text_;
};

void ShowMain(Gallery* gallery) {
  Skin skin = TracedSkin();
  skin.visual_colours[kVisualDots] = skin.visual_colours[kVisualBackground];  // see Visual.HasDots
  Skin old_digits = skin;
  old_digits.images[kelvo::kSkinNumbersEx] = Bitmap();
  const auto show = [&](const std::string& name, const std::function<void(MainState*)>& set,
                        const Skin& with, int text_width = 0, bool whole = false) {
    MainState state;
    set(&state);
    Canvas canvas(kMainSize);
    DrawMain(&canvas, with, state, TracedBitmap(kSongText, text_width, text_width ? 6 : 0));
    gallery->Show("main: " + name, canvas.picture(), whole);
  };
  show(
      "stopped", [](MainState*) {}, skin, 0, true);
  const struct {
    const char* name;
    void (*set)(MainState*);
    int text_width = 0;
  } kStates[] = {
      {"inactive", [](MainState* s) { s->active = false; }},
      {"rolled up", [](MainState* s) { s->rolled = true; }},
      {"rolled up, an hour", [](MainState* s) { s->rolled = true, s->time_s = 3609; }},
      {"rolled up, remaining",
       [](MainState* s) { s->rolled = s->remaining = true, s->time_s = 59; }},
      {"rolled up, inactive", [](MainState* s) { s->rolled = true, s->active = false; }},
      {"unshade pressed", [](MainState* s) { s->rolled = true, s->pressed = MainControl::kShade; }},
      {"playing", [](MainState* s) { s->sign = PlaySign::kPlaying; }},
      {"paused", [](MainState* s) { s->sign = PlaySign::kPaused; }},
      {"all on",
       [](MainState* s) { s->shuffle = s->repeat = s->equalizer_open = s->playlist_open = true; }},
      {"shuffle alone", [](MainState* s) { s->shuffle = true; }},
      {"equalizer alone", [](MainState* s) { s->equalizer_open = true; }},
      {"mono, 8 kbit/s", [](MainState* s) { s->channels = 1, s->bit_rate = 8; }},
      {"stereo, more than three digits",
       [](MainState* s) { s->channels = 2, s->bit_rate = 1411, s->sample_rate = 44; }},
      {"volume 100, balance left", [](MainState* s) { s->volume = 100, s->balance = -100; }},
      {"volume 55, balance right", [](MainState* s) { s->volume = 55, s->balance = 30; }},
      {"position 0", [](MainState* s) { s->position = 0; }},
      {"position at the end, pressed",
       [](MainState* s) { s->position = 1000, s->pressed = MainControl::kPosition; }},
      {"short text", [](MainState*) {}, 60},
      {"long text", [](MainState*) {}, 200},
      {"long text, scrolled", [](MainState* s) { s->scroll = 60; }, 200},
      {"long text, scrolled round", [](MainState* s) { s->scroll = 200 * 1000 + 1; }, 200},
      {"spectrum",
       [](MainState* s) {
         s->visual.mode = VisualMode::kSpectrum;
         s->visual.bars[0] = 15;
         s->visual.bars[18] = 1;
         s->visual.peaks[18] = 200;  // more than there is
         s->visual.peaks[1] = 7;
       }},
      {"wave",
       [](MainState* s) {
         s->visual.mode = VisualMode::kWave;
         for (auto& height : s->visual.wave) height = 8;
         s->visual.wave[75] = 15;
       }},
  };
  for (const auto& state : kStates) show(state.name, state.set, skin, state.text_width);
  for (int control = 1; control <= static_cast<int>(MainControl::kTitleBar); ++control) {
    for (const bool on : {false, true}) {
      if (on && (control < static_cast<int>(MainControl::kShuffle) ||
                 control > static_cast<int>(MainControl::kPlaylist)))
        continue;
      const auto set = [&](MainState* s) {
        s->pressed = static_cast<MainControl>(control);
        s->shuffle = s->repeat = s->equalizer_open = s->playlist_open = on;
      };
      show("control " + std::to_string(control) + (on ? " pressed, all on" : " pressed"), set,
           skin);
    }
  }
  for (const int seconds : {0, 9, 60, 5999, 6000, 2147483647}) {
    const auto set = [&](MainState* s) { s->time_s = seconds, s->remaining = seconds > 0; };
    show(std::to_string(seconds) + " s", set, skin);
  }
  show(
      "old digits", [](MainState* s) { s->time_s = 1; }, old_digits);
  show(
      "old digits, minus", [](MainState* s) { s->time_s = 1, s->remaining = true; }, old_digits);
}

void ShowEqualizer(Gallery* gallery) {
  const Skin skin = TracedSkin();
  const auto show = [&](const std::string& name, const EqualizerViewState& state, bool whole) {
    Canvas canvas(kEqualizerSize);
    DrawEqualizer(&canvas, skin, state);
    gallery->Show("equalizer: " + name, canvas.picture(), whole);
  };
  show("off", {}, true);
  EqualizerViewState state;
  state.on = state.bass = state.clips = true;
  state.active = false;
  const int kSliders[] = {27, 25, 22, 20, 17, 14, 13, 10, 7, 5, 2};
  std::copy_n(kSliders, kEqualizerSliders, state.sliders);
  state.pressed = EqualizerControl::kSlider;
  state.pressed_slider = 10;
  for (int x = 0; x < kCurvePlace.width; ++x) state.curve[x] = x < 50 ? -1000 : x < 90 ? 1000 : 9;
  show("on", state, false);
  for (int control = 1; control < static_cast<int>(EqualizerControl::kTitleBar); ++control) {
    for (const bool on : {false, true}) {
      EqualizerViewState pressed;
      pressed.on = pressed.bass = on;
      pressed.pressed = static_cast<EqualizerControl>(control);
      show("control " + std::to_string(control) + (on ? " pressed, on" : " pressed"), pressed,
           false);
    }
  }
}

// Marks the area that text would have.
class AreaPainter final : public TextPainter {
 public:
  int Width(std::u16string_view text) override { return static_cast<int>(text.size()) * 6; }
  void Draw(Canvas* canvas, Rect area, std::u16string_view, Colour colour) override {
    canvas->Fill(area, colour);
  }
};

void ShowPlaylist(Gallery* gallery) {
  Skin skin = TracedSkin();
  AreaPainter painter;
  PlaylistViewState state;
  const auto show = [&](const char* name, bool whole = false) {
    Canvas canvas(state.size);
    DrawPlaylist(&canvas, skin, state, painter);
    gallery->Show(std::string("playlist: ") + name, canvas.picture(), whole);
  };
  show("least size", true);
  state.rows = {{u"first", u"1:00", false, true}, {u"second", u"", true, false}};
  state.first = state.last_first = 7;
  state.pressed = PlaylistControl::kScrollBar;
  state.running_time = u"12:34";
  state.play_time = u"0:56";
  show("rows, scrolled to the end");
  state.pressed = PlaylistControl::kClose;
  state.active = false;
  show("close pressed, inactive");
  state.size = {300, 145};
  state.pressed = PlaylistControl::kShade;
  state.active = true;
  show("shade pressed, larger", true);
  state.size.height = kPlaylistRolled;
  state.rolled_text = std::u16string(100, u'A');
  show("rolled up", true);
  state.active = false;
  state.pressed = PlaylistControl::kNone;
  show("rolled up, inactive");
  state.size = kPlaylistLeast;
  state.rows[0].dimmed = state.rows[1].dimmed = true;
  skin.playlist.text = 0x00FF00;
  skin.playlist.current = 0xFFFFFF;
  skin.playlist.background = 0x000020;
  skin.playlist.selected = 0x0000C0;
  show("rows that cannot be played");
}

// Latin-1 in rows of 32, of which the first holds some from elsewhere; and which of them have
// pictures.
void ShowLetters(Gallery* gallery) {
  const Skin skin = TracedSkin();
  Canvas letters({32 * kLetterWidth, 8 * kLetterHeight});
  Bitmap has(32, 8);
  for (int i = 0; i < 256; ++i) {
    const char16_t others[] = u"\u2018\u2019\u201C\u201D\u2013\u2014\u2026\u0416\u4E2D";
    const std::u16string letter(1, i < 9 ? others[i] : static_cast<char16_t>(i));
    DrawSkinText(&letters, skin.image(kelvo::kSkinText), letter,
                 {i % 32 * kLetterWidth, i / 32 * kLetterHeight});
    has.Row(i / 32)[i % 32] = 0xFF0000u + FontHas(letter) + 2 * FontHas(u"A" + letter);
  }
  gallery->Show("letters", letters.picture(), true);
  gallery->Show("letters that have pictures", has, true);
}

template <class ControlAt>
void ShowHits(Gallery* gallery, const std::string& name, Size size, ControlAt control_at) {
  Bitmap hits(size.width, size.height);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      hits.Row(y)[x] = 0xFF0000u + static_cast<Colour>(control_at(Point{x, y}));
    }
  }
  gallery->Show(name + ": what is hit", hits, true);
}

std::string Drawn() {
  Gallery gallery;
  ShowMain(&gallery);
  ShowHits(&gallery, "main", kMainSize, &MainControlAt);
  ShowEqualizer(&gallery);
  ShowHits(&gallery, "equalizer", kEqualizerSize, [](Point point) {
    const EqualizerHit hit = EqualizerHitAt(point);
    return static_cast<int>(hit.control) * 16 + hit.slider;
  });
  ShowPlaylist(&gallery);
  for (const Size size : {Size{275, 116}, Size{300, 145}, Size{300, kPlaylistRolled}}) {
    ShowHits(&gallery, "playlist", size, [size](Point p) { return PlaylistControlAt(size, p); });
  }
  ShowLetters(&gallery);
  return gallery.text();
}

TEST(Views, AreAsTheyWereLastSeen) {
  const char kDrawn[] = "views.txt";
  const std::string drawn = Drawn();
  std::ofstream(kDrawn, std::ios::binary) << drawn;
  std::ifstream golden(KELVO_GOLDEN_VIEWS, std::ios::binary);
  const std::string wanted(std::istreambuf_iterator<char>(golden), {});
  if (drawn == wanted) return;
  std::istringstream now(drawn), before(wanted);
  std::string line, want, state;
  do {
    if (!line.empty() && line[0] == '[') state = line;
    if (!std::getline(now, line)) line = "(end)";
    if (!std::getline(before, want)) want = "(end)";
  } while (line == want && line != "(end)");
  FAIL() << state << " is drawn with \"" << line << "\", not \"" << want
         << "\".\nAll that is drawn is in bin/" << kDrawn
         << " of the build folder; if it is right, copy it to " << KELVO_GOLDEN_VIEWS;
}

TEST(Visual, HasDots) {
  MainState state;
  state.visual.mode = VisualMode::kSpectrum;
  Canvas canvas(kMainSize);
  DrawMain(&canvas, TracedSkin(), state, Bitmap());
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 76; ++x) {
      EXPECT_EQ(canvas.picture().At(24 + x, 43 + y), 0xFF0000u + (y % 2 == 1 && x % 2 == 0));
    }
  }
}

TEST(Sliders, ThumbAndValueAgree) {
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

TEST(PlaylistLayout, SizesRowsAndThumb) {
  const struct {
    Size wanted, want;
  } sizes[] = {
      {{-500, -500}, {275, 116}},
      {{287, 130}, {275, 116}},
      {{288, 131}, {300, 145}},
      {{1000, 1000}, {1000, 986}},
  };
  for (const auto& c : sizes) EXPECT_EQ(PlaylistSizeNear(c.wanted), c.want);
  EXPECT_EQ(PlaylistRows(kPlaylistLeast), 4);
  constexpr int kRows[][2] = {{6, -2}, {7, -1}, {19, -1}, {20, 0}, {32, 0}, {33, 1}};
  for (const auto& row : kRows) EXPECT_EQ(PlaylistRowAt(kPlaylistLeast, row[0]), row[1]) << row[0];
  EXPECT_EQ(PlaylistThumbTop(kPlaylistLeast, 0, 0), 20);
  EXPECT_EQ(PlaylistThumbTop(kPlaylistLeast, 10, 10), 60);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 0, 10), 0);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 1000, 10), 10);
  EXPECT_EQ(PlaylistFirstRowAt(kPlaylistLeast, 1000, 0), 0);
}

}  // namespace
}  // namespace velmora
