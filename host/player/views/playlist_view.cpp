#include "host/player/views/playlist_view.h"

#include "host/player/skin/canvas.h"

namespace velmora {
namespace {

constexpr Rect kLeftCorner = {0, 0, 25, kPlaylistTop};
constexpr Rect kTitle = {26, 0, 100, kPlaylistTop};
constexpr Rect kTopTile = {127, 0, 25, kPlaylistTop};
constexpr Rect kRightCorner = {153, 0, 25, kPlaylistTop};
constexpr int kInactiveTop = 21;  // the same pieces further down, without the keyboard
constexpr Rect kLeftBorder = {0, 42, 12, 29};
constexpr Rect kRightBorder = {31, 42, 20, 29};
constexpr Rect kBottomLeft = {0, 72, 125, kPlaylistBottom};
constexpr Rect kBottomRight = {126, 72, 150, kPlaylistBottom};
constexpr Rect kBottomTile = {179, 0, 25, kPlaylistBottom};
constexpr Rect kRolledLeft = {72, 42, 25, kPlaylistRolled};
constexpr Rect kRolledTile = {72, 57, 25, kPlaylistRolled};
constexpr Rect kRolledRight = {99, 42, 50, kPlaylistRolled};
constexpr int kInactiveRolled = 15;
constexpr Point kRolledText = {5, 4};
// From the lower right corner.
constexpr Point kRunningTime = {-143, -28};
constexpr Point kPlayTime = {-82, -15};
constexpr int kTimeGap = 4;  // between a row's text and its time

void DrawTop(Canvas* canvas, const Bitmap& image, const PlaylistViewState& state) {
  const auto piece = [&](Rect place) {
    if (!state.active) place.y += kInactiveTop;
    return place;
  };
  const int width = state.size.width;
  canvas->Tile(image, piece(kTopTile), {0, 0, width, kPlaylistTop});
  canvas->Draw(image, piece(kLeftCorner), {0, 0});
  canvas->Draw(image, piece(kTitle), {(width - kTitle.width) / 2, 0});
  canvas->Draw(image, piece(kRightCorner), {width - kRightCorner.width, 0});
}

void DrawSides(Canvas* canvas, const Bitmap& image, const PlaylistViewState& state) {
  const Size size = state.size;
  const int height = size.height - kPlaylistTop - kPlaylistBottom;
  const int right = size.width - kRightBorder.width;
  canvas->Tile(image, kLeftBorder, {0, kPlaylistTop, kLeftBorder.width, height});
  canvas->Tile(image, kRightBorder, {right, kPlaylistTop, kRightBorder.width, height});
  const int column = state.pressed == PlaylistControl::kScrollBar ? 61 : 52;
  canvas->Draw(image, {column, 53, 8, kScrollThumbHeight},
               {right + 5, PlaylistThumbTop(size, state.first, state.last_first)});
}

void DrawBottom(Canvas* canvas, const Skin& skin, const PlaylistViewState& state) {
  const Bitmap& image = skin.image(kelvo::kSkinPlaylist);
  const Size size = state.size;
  const int y = size.height - kPlaylistBottom;
  canvas->Tile(image, kBottomTile, {0, y, size.width, kPlaylistBottom});
  canvas->Draw(image, kBottomLeft, {0, y});
  canvas->Draw(image, kBottomRight, {size.width - kBottomRight.width, y});
  DrawSkinText(canvas, skin.image(kelvo::kSkinText), state.running_time,
               {size.width + kRunningTime.x, size.height + kRunningTime.y});
  DrawSkinText(canvas, skin.image(kelvo::kSkinText), state.play_time,
               {size.width + kPlayTime.x, size.height + kPlayTime.y});
}

// The sheet has them pressed only; at rest they are part of the corners.
void DrawPressedButton(Canvas* canvas, const Bitmap& image, const PlaylistViewState& state) {
  if (state.pressed != PlaylistControl::kClose && state.pressed != PlaylistControl::kShade) return;
  const Rect place = PlaylistButtonPlace(state.size, state.pressed);
  const int column = state.pressed == PlaylistControl::kClose ? 52 : 62;
  canvas->Draw(image, {column, 42, place.width, place.height}, {place.x, place.y});
}

void DrawRolled(Canvas* canvas, const Skin& skin, const PlaylistViewState& state) {
  const Bitmap& image = skin.image(kelvo::kSkinPlaylist);
  const int width = state.size.width;
  const int right = width - kRolledRight.width;
  Rect end = kRolledRight;
  if (!state.active) end.y += kInactiveRolled;
  canvas->Tile(image, kRolledTile, {0, 0, width, kPlaylistRolled});
  canvas->Draw(image, kRolledLeft, {0, 0});
  const auto letters = static_cast<size_t>((right - kRolledText.x) / kLetterWidth);
  DrawSkinText(canvas, skin.image(kelvo::kSkinText), state.rolled_text.substr(0, letters),
               kRolledText);
  canvas->Draw(image, end, {right, 0});
  DrawPressedButton(canvas, image, state);
}

// Half way to what is behind it.
Colour Dimmed(Colour ink, Colour paper) {
  return (ink >> 1 & 0x7F7F7F) + (paper >> 1 & 0x7F7F7F);
}

void DrawRows(Canvas* canvas, const PlaylistStyle& style, const PlaylistViewState& state,
              TextPainter& painter) {
  const Rect list = PlaylistListPlace(state.size);
  canvas->Fill(list, style.background);
  int y = list.y;
  for (const PlaylistRow& row : state.rows) {
    const Rect place = {list.x, y, list.width, kPlaylistRow};
    if (row.selected) canvas->Fill(place, style.selected);
    const Colour ink = row.current ? style.current : style.text;
    const Colour paper = row.selected ? style.selected : style.background;
    const Colour colour = row.dimmed ? Dimmed(ink, paper) : ink;
    const int time = row.time.empty() ? 0 : painter.Width(row.time);
    painter.Draw(canvas, {place.x, y, place.width - time - kTimeGap, place.height}, row.text,
                 colour);
    if (time > 0) {
      painter.Draw(canvas, {place.right() - time, y, time, place.height}, row.time, colour);
    }
    y += kPlaylistRow;
  }
}

}  // namespace

void DrawPlaylist(Canvas* canvas, const Skin& skin, const PlaylistViewState& state,
                  TextPainter& painter) {
  if (state.size.height == kPlaylistRolled) {
    DrawRolled(canvas, skin, state);
    return;
  }
  const Bitmap& image = skin.image(kelvo::kSkinPlaylist);
  canvas->Fill({0, 0, state.size.width, state.size.height}, skin.playlist.background);
  DrawRows(canvas, skin.playlist, state, painter);
  DrawTop(canvas, image, state);
  DrawSides(canvas, image, state);
  DrawBottom(canvas, skin, state);
  DrawPressedButton(canvas, image, state);
}

}  // namespace velmora
