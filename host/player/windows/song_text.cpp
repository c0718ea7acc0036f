#include "host/player/windows/gdi_text.h"

#include <algorithm>
#include <cstdlib>

#include "host/player/skin/canvas.h"
#include "host/player/views/main_view.h"
#include "host/text.h"

namespace velmora {
namespace {

constexpr int kSystemTextHeight = 12;
constexpr int kSystemFontHeight = 10;

// The place of the space in the skin's font.
constexpr Rect kSpaceCell = {30 * kLetterWidth, 0, kLetterWidth, kLetterHeight};

int Contrast(Colour a, Colour b) {
  int sum = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    sum += std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255));
  }
  return sum;
}

// The colour of the skin's letters: the one that differs most from what is behind them.
Colour Ink(const Bitmap& font, Colour paper) {
  Colour ink = paper;
  for (int y = 0; y < std::min(font.height, kLetterHeight); ++y) {
    for (int x = 0; x < std::min(font.width, 26 * kLetterWidth); ++x) {
      if (Contrast(font.At(x, y), paper) > Contrast(ink, paper)) ink = font.At(x, y);
    }
  }
  return ink;
}

Bitmap InSkinLetters(const Skin& skin, std::u16string_view text) {
  Canvas canvas({static_cast<int>(text.size()) * kLetterWidth, kLetterHeight});
  DrawSkinText(&canvas, skin.image(kelvo::kSkinText), text, {0, 0});
  return canvas.picture();
}

Bitmap InSystemLetters(const Skin& skin, std::u16string_view text, GdiText& painter) {
  const Bitmap& font = skin.image(kelvo::kSkinText);
  const Colour paper = font.At(kSpaceCell.x, kSpaceCell.y);
  Canvas canvas({painter.Width(text), kSystemTextHeight});
  canvas.Fill({0, 0, canvas.size().width, kSystemTextHeight}, paper);
  painter.Draw(&canvas, {0, 0, canvas.size().width, kSystemTextHeight}, text, Ink(font, paper));
  return canvas.picture();
}

}  // namespace

Bitmap SongTextPicture(const Skin& skin, const std::wstring& wide) {
  const std::u16string text = ToView(wide);
  const std::u16string round = text + u"  ***  ";
  if (FontHas(text)) {
    const bool fits = static_cast<int>(text.size()) * kLetterWidth <= kSongTextPlace.width;
    return InSkinLetters(skin, fits ? text : round);
  }
  GdiText painter(L"Tahoma", kSystemFontHeight);
  const bool fits = painter.Width(text) <= kSongTextPlace.width;
  return InSystemLetters(skin, fits ? text : round, painter);
}

}  // namespace velmora
