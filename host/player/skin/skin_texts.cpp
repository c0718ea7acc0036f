#include "host/player/skin/skin_loader.h"

namespace velmora {
namespace {

constexpr size_t kLongestFontName = 31;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Takes the first line off the text.
std::string_view TakeLine(std::string_view* text) {
  const size_t end = text->find('\n');
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(end == std::string_view::npos ? text->size() : end + 1);
  return Trim(line);
}

// Takes a number of 0 to 255 and the separators before it off the line.
bool TakeChannel(std::string_view* line, Colour* channel) {
  while (!line->empty() && (IsBlank(line->front()) || line->front() == ',')) line->remove_prefix(1);
  Colour number = 0;
  size_t digits = 0;
  while (digits < 3 && digits < line->size() && (*line)[digits] >= '0' && (*line)[digits] <= '9') {
    number = number * 10 + static_cast<Colour>((*line)[digits++] - '0');
  }
  line->remove_prefix(digits);
  *channel = number;
  return digits > 0 && number <= 255;
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c;
}

bool EqualWithoutCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = Lower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

void ReadHexColour(std::string_view text, Colour* colour) {
  if (!text.empty() && text.front() == '#') text.remove_prefix(1);
  if (text.size() < 6) return;
  Colour read = 0;
  for (size_t i = 0; i < 6; ++i) {
    const int digit = HexDigit(text[i]);
    if (digit < 0) return;
    read = read << 4 | static_cast<Colour>(digit);
  }
  *colour = read;
}

}  // namespace

void ReadVisualColours(std::string_view text, Colour (&colours)[kVisualColours]) {
  int next = 0;
  while (!text.empty() && next < kVisualColours) {
    std::string_view line = TakeLine(&text);
    Colour red, green, blue;
    if (TakeChannel(&line, &red) && TakeChannel(&line, &green) && TakeChannel(&line, &blue)) {
      colours[next++] = red << 16 | green << 8 | blue;
    }
  }
}

void ReadPlaylistStyle(std::string_view text, PlaylistStyle* style) {
  while (!text.empty()) {
    const std::string_view line = TakeLine(&text);
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    const std::string_view name = Trim(line.substr(0, equals));
    const std::string_view value = Trim(line.substr(equals + 1));
    if (EqualWithoutCase(name, "Normal")) ReadHexColour(value, &style->text);
    if (EqualWithoutCase(name, "Current")) ReadHexColour(value, &style->current);
    if (EqualWithoutCase(name, "NormalBG")) ReadHexColour(value, &style->background);
    if (EqualWithoutCase(name, "SelectedBG")) ReadHexColour(value, &style->selected);
    if (EqualWithoutCase(name, "Font") && !value.empty() && value.size() <= kLongestFontName) {
      style->font = value;
    }
  }
}

}  // namespace velmora
