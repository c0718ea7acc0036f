// The letters of text.bmp: 5 by 6 pixels, capitals, digits and some signs.
#pragma once

#include <string_view>

#include "host/player/skin/canvas.h"

namespace velmora {

constexpr int kLetterWidth = 5;
constexpr int kLetterHeight = 6;

// Whether every letter of the text has a picture, its own or that of its base letter.
bool FontHas(std::u16string_view text);

// Letters without a picture are left out as spaces.
void DrawSkinText(Canvas* canvas, const Bitmap& font, std::u16string_view text, Point at);

}  // namespace velmora
