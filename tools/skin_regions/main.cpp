// Which pixels of a skin's bitmaps the player shows, and where one piece ends and another begins:
// found out by drawing its windows in many states with a skin in which each pixel says where it is
// from. Writes for each bitmap "NAME WIDTH HEIGHT", then a digit a pixel: 1 shown, 2 more when the
// next pixel to the right is another piece, 4 more when the one below is.
#include <stdio.h>
#include <string.h>

#include <vector>

#include "host/player/views/equalizer_view.h"
#include "host/player/views/main_view.h"
#include "host/player/views/playlist_view.h"

namespace velmora {
namespace {

constexpr Size kSheets[kelvo::kSkinFileCount + 1] = {
    {},        {68, 433}, {136, 36}, {275, 82}, {275, 315}, {275, 116},
    {58, 24},  {99, 13},  {108, 13}, {42, 9},   {280, 186}, {},
    {307, 10}, {92, 85},  {155, 18}, {344, 87}, {},         {68, 433}};

// A pixel's colour: the mark, the bitmap's number, column, row.
constexpr Colour kMark = 1u << 23;
constexpr int kFileShift = 18, kColumnShift = 9, kSideMask = (1 << 9) - 1;

struct Sheet {
  std::vector<char> shown, joins_right, joins_below;
  void Resize(Size size) {
    for (auto* flags : {&shown, &joins_right, &joins_below}) {
      flags->assign(static_cast<size_t>(size.width * size.height), 0);
    }
  }
};

class Regions {
 public:
  Regions() {
    for (int file = 1; file <= kelvo::kSkinFileCount; ++file) {
      const Size size = kSheets[file];
      Bitmap& image = skin.images[file] = Bitmap(size.width, size.height);
      sheets_[file].Resize(size);
      for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
          image.Row(y)[x] = kMark | static_cast<Colour>(file << kFileShift | x << kColumnShift | y);
        }
      }
    }
  }

  // What one drawing shows.
  void Add(const Bitmap& picture) {
    for (int y = 0; y < picture.height; ++y) {
      const Colour* const row = picture.Row(y);
      const Colour* const below = y + 1 < picture.height ? picture.Row(y + 1) : nullptr;
      for (int x = 0; x < picture.width; ++x) {
        const Colour colour = row[x];
        if ((colour & kMark) == 0) continue;
        Sheet& sheet = sheets_[colour >> kFileShift & 31];
        const size_t at = Place(colour);
        sheet.shown[at] = 1;
        if (x + 1 < picture.width && row[x + 1] == colour + (1 << kColumnShift)) {
          sheet.joins_right[at] = 1;
        }
        if (below && below[x] == colour + 1) sheet.joins_below[at] = 1;
      }
    }
  }

  void Print() const {
    for (int file = 1; file <= kelvo::kSkinFileCount; ++file) {
      const Size size = kSheets[file];
      if (size.width == 0) continue;
      printf("%s %d %d\n", kelvo::SkinFileName(file), size.width, size.height);
      const Sheet& sheet = sheets_[file];
      for (size_t at = 0; at < sheet.shown.size(); ++at) {
        const auto differs = [&](size_t other, char joined) {
          return other < sheet.shown.size() && (sheet.shown[at] || sheet.shown[other]) && !joined;
        };
        const auto width = static_cast<size_t>(size.width);
        const bool right = (at + 1) % width != 0 && differs(at + 1, sheet.joins_right[at]);
        const bool below = differs(at + width, sheet.joins_below[at]);
        putchar('0' + sheet.shown[at] + 2 * right + 4 * below);
        if ((at + 1) % width == 0) putchar('\n');
      }
    }
  }

  Skin skin;

 private:
  static size_t Place(Colour colour) {
    const auto file = colour >> kFileShift & 31;
    const auto x = colour >> kColumnShift & kSideMask, y = colour & kSideMask;
    return y * static_cast<size_t>(kSheets[file].width) + x;
  }
  Sheet sheets_[kelvo::kSkinFileCount + 1];
};

int Random(int below) {
  static uint32_t state = 1;
  state = state * 1664525u + 1013904223u;
  return static_cast<int>((state >> 8) % static_cast<uint32_t>(below));
}

// Letters one by one: side by side two of them would look like one piece.
std::u16string Letters() {
  std::u16string text;
  for (int i = 0; i < 14; ++i) {
    text +=
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZ\"@0123456789\u2026.:()-'!_+\\/[]^&%,=$#\u00C5\u00D6\u00C4?*"
            [Random(64)];
    text += u' ';
  }
  return text;
}

void DrawMainOnce(Regions& regions) {
  // No two neighbouring numerals, for the same reason.
  constexpr int kRates[] = {0, 8, 20, 42, 64, 97, 131, 319, 753, 864, 975, 1411};
  MainState state;
  state.active = Random(2) != 0;
  state.rolled = Random(4) == 0;
  state.pressed = static_cast<MainControl>(Random(static_cast<int>(MainControl::kPosition) + 1));
  state.sign = static_cast<PlaySign>(Random(3));
  state.time_s = Random(6000) - 1;
  state.remaining = Random(2) != 0;
  state.bit_rate = kRates[Random(12)];
  state.sample_rate = kRates[Random(6)];
  state.channels = Random(3);
  state.position = Random(1002) - 1;
  state.volume = Random(101);
  state.balance = Random(201) - 100;
  state.shuffle = Random(2) != 0;
  state.repeat = Random(2) != 0;
  state.equalizer_open = Random(2) != 0;
  state.playlist_open = Random(2) != 0;
  Bitmap letters(kSongTextPlace.width, kSongTextPlace.height);
  Canvas text({kSongTextPlace.width, kSongTextPlace.height});
  DrawSkinText(&text, regions.skin.image(kelvo::kSkinText), Letters(), {0, 0});
  Canvas canvas(state.rolled ? Size{kMainSize.width, kTitleBarHeight} : kMainSize);
  DrawMain(&canvas, regions.skin, state, text.picture());
  regions.Add(canvas.picture());
}

void DrawEqualizerOnce(Regions& regions) {
  EqualizerViewState state;
  state.active = Random(2) != 0;
  state.pressed =
      static_cast<EqualizerControl>(Random(static_cast<int>(EqualizerControl::kSlider) + 1));
  state.pressed_slider = Random(kEqualizerSliders);
  state.on = Random(2) != 0;
  state.bass = Random(2) != 0;
  for (int& slider : state.sliders) slider = Random(28);
  for (int& row : state.curve) row = Random(kCurvePlace.height);
  Canvas canvas(kEqualizerSize);
  DrawEqualizer(&canvas, regions.skin, state);
  regions.Add(canvas.picture());
}

class NoPainter final : public TextPainter {
  int Width(std::u16string_view text) override { return static_cast<int>(text.size()) * 5; }
  void Draw(Canvas*, Rect, std::u16string_view, Colour) override {}
};

void DrawPlaylistOnce(Regions& regions) {
  PlaylistViewState state;
  state.size = {kPlaylistLeast.width + Random(4) * kPlaylistStep.width,
                kPlaylistLeast.height + Random(3) * kPlaylistStep.height};
  if (Random(4) == 0) state.size.height = kPlaylistRolled;
  state.active = Random(2) != 0;
  state.pressed =
      static_cast<PlaylistControl>(Random(static_cast<int>(PlaylistControl::kTitleBar) + 1));
  state.last_first = Random(50);
  state.first = Random(state.last_first + 1);
  state.running_time = u"9 7 5";
  state.play_time = u"3 1";
  state.rolled_text = Letters();
  Canvas canvas(state.size);
  NoPainter painter;
  DrawPlaylist(&canvas, regions.skin, state, painter);
  regions.Add(canvas.picture());
}

}  // namespace
}  // namespace velmora

int main() {
  velmora::Regions regions;
  constexpr int kDrawings = 500;
  const velmora::Bitmap numerals = regions.skin.images[kelvo::kSkinNumbersEx];
  for (int i = 0; i < kDrawings; ++i) {
    // Of the two bitmaps with numerals only one counts.
    regions.skin.images[kelvo::kSkinNumbersEx] = i % 2 == 0 ? numerals : velmora::Bitmap();
    velmora::DrawMainOnce(regions);
    velmora::DrawEqualizerOnce(regions);
    velmora::DrawPlaylistOnce(regions);
  }
  regions.Print();
  return 0;
}
