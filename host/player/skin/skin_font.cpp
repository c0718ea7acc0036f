#include "host/player/skin/canvas.h"

namespace velmora {
namespace {

constexpr std::u16string_view kRows[] = {
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZ\"@",
    u"0123456789\u2026.:()-'!_+\\/[]^&%,=$#",
    u"\u00C5\u00D6\u00C4?*",
};
constexpr Point kSpace = {30, 0};

// Letters with marks, from U+00C0 and once more, small, from U+00E0; and what stands for them. A
// space: nothing does.
constexpr std::u16string_view kBaseLetters = u"AAAAAA CEEEEIIII NOOOOO OUUUUY  ";

struct Substitute {
  char16_t letter, instead;
};
constexpr Substitute kSubstitutes[] = {
    {u'{', u'('},       {u'}', u')'},       {u'<', u'('},      {u'>', u')'},      {u'`', u'\''},
    {u'\u2018', u'\''}, {u'\u2019', u'\''}, {u'\u201C', u'"'}, {u'\u201D', u'"'}, {u'\u2013', u'-'},
    {u'\u2014', u'-'},  {u';', u':'},       {u'~', u'-'},      {u'|', u'/'},      {u'\u00FF', u'Y'},
};

bool Find(char16_t c, Point* cell) {
  for (int row = 0; row < 3; ++row) {
    const size_t column = kRows[row].find(c);
    if (column == std::u16string_view::npos) continue;
    *cell = {static_cast<int>(column), row};
    return true;
  }
  return false;
}

char16_t Capital(char16_t c) {
  if (c >= u'a' && c <= u'z') return static_cast<char16_t>(c - u'a' + u'A');
  if (c >= 0xE0 && c < 0xFF && c != 0xF7) return static_cast<char16_t>(c - 0x20);
  return c;
}

char16_t BaseLetter(char16_t c) {
  if (c >= 0xC0 && c < 0xE0) return kBaseLetters[c - 0xC0];
  for (const Substitute& substitute : kSubstitutes) {
    if (substitute.letter == c) return substitute.instead;
  }
  return u' ';
}

// The letter's place in the font, in letters. False: the font has nothing like it.
bool CellOf(char16_t c, Point* cell) {
  *cell = kSpace;
  if (c == u' ' || c == 0xA0) return true;
  const char16_t capital = Capital(c);
  if (Find(capital, cell)) return true;
  const char16_t base = BaseLetter(capital);
  return base != u' ' && Find(base, cell);
}

}  // namespace

bool FontHas(std::u16string_view text) {
  Point cell;
  for (char16_t c : text) {
    if (!CellOf(c, &cell)) return false;
  }
  return true;
}

void DrawSkinText(Canvas* canvas, const Bitmap& font, std::u16string_view text, Point at) {
  for (char16_t c : text) {
    Point cell;
    CellOf(c, &cell);
    canvas->Draw(font, {cell.x * kLetterWidth, cell.y * kLetterHeight, kLetterWidth, kLetterHeight},
                 at);
    at.x += kLetterWidth;
  }
}

}  // namespace velmora
