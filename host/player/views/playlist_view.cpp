#include "host/player/views/playlist_view.h"

#include "host/player/skin/skin_font.h"

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
constexpr Point kRunningTime = {-143, -28};  // from the lower right corner
constexpr int kTimeGap = 4;                  // between a row's text and its time

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
  const int column = state.thumb_pressed ? 61 : 52;
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
}

void DrawRows(Canvas* canvas, const PlaylistStyle& style, const PlaylistViewState& state,
              TextPainter& painter) {
  const Rect list = PlaylistListPlace(state.size);
  canvas->Fill(list, style.background);
  int y = list.y;
  for (const PlaylistRow& row : state.rows) {
    const Rect place = {list.x, y, list.width, kPlaylistRow};
    if (row.selected) canvas->Fill(place, style.selected);
    const Colour colour = row.current ? style.current : style.text;
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
  const Bitmap& image = skin.image(kelvo::kSkinPlaylist);
  canvas->Fill({0, 0, state.size.width, state.size.height}, skin.playlist.background);
  DrawRows(canvas, skin.playlist, state, painter);
  DrawTop(canvas, image, state);
  DrawSides(canvas, image, state);
  DrawBottom(canvas, skin, state);
}

}  // namespace velmora
