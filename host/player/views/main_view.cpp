#include "host/player/views/main_view.h"

#include <cstdlib>
#include <string>

#include "host/player/skin/canvas.h"

namespace velmora {
namespace {

using kelvo::SkinFile;

constexpr int kDigitWidth = 9;
constexpr int kDigitHeight = 13;
constexpr int kBlankDigit = 10;
constexpr int kMinusDigit = 11;  // in nums_ex.bmp only
constexpr int kDigitsTop = 26;
constexpr int kDigitColumns[] = {48, 60, 78, 90};
constexpr int kMinusColumn = 36;
constexpr int kRolledTimeRight = 240;
constexpr int kRolledTimeTop = 4;

constexpr int kSliderPictures = 28;
constexpr int kSliderPictureStep = 15;  // rows from one background to the next

void DrawTitleBar(Canvas* canvas, const Skin& skin, const MainState& state) {
  const int row = state.rolled ? (state.active ? 29 : 42) : (state.active ? 0 : 15);
  canvas->Draw(skin.image(kelvo::kSkinTitleBar), {27, row, kMainSize.width, kTitleBarHeight},
               {0, 0});
}

void DrawButtons(Canvas* canvas, const Skin& skin, const MainState& state) {
  for (const MainButton& button : kMainButtonTable) {
    const bool on = (button.control == MainControl::kShuffle && state.shuffle) ||
                    (button.control == MainControl::kRepeat && state.repeat) ||
                    (button.control == MainControl::kEqualizer && state.equalizer_open) ||
                    (button.control == MainControl::kPlaylist && state.playlist_open);
    const ButtonLook& look =
        button.control == MainControl::kShade && state.rolled ? kUnshadeLook : button.look;
    DrawButton(canvas, skin, look, state.pressed == button.control, on);
  }
}

void DrawPlaySign(Canvas* canvas, const Skin& skin, PlaySign sign) {
  const Bitmap& image = skin.image(kelvo::kSkinPlayPause);
  const int column = sign == PlaySign::kPlaying ? 0 : sign == PlaySign::kPaused ? 9 : 18;
  canvas->Draw(image, {column, 0, 9, 9}, {26, 28});
  // The narrow light at its left: sound is coming.
  if (sign == PlaySign::kPlaying) canvas->Draw(image, {39, 0, 3, 9}, {24, 28});
}

void DrawTime(Canvas* canvas, const Skin& skin, const MainState& state) {
  const Bitmap& better = skin.image(kelvo::kSkinNumbersEx);
  const Bitmap& digits = better.empty() ? skin.image(kelvo::kSkinNumbers) : better;
  int shown[4] = {kBlankDigit, kBlankDigit, kBlankDigit, kBlankDigit};
  if (state.time_s >= 0) {
    // Four digits: from 100 minutes on they are hours and minutes.
    const int small = state.time_s < 6000 ? state.time_s : state.time_s / 60;
    const int high = small / 60 % 100;
    const int low = small % 60;
    shown[0] = high / 10;
    shown[1] = high % 10;
    shown[2] = low / 10;
    shown[3] = low % 10;
  }
  for (int i = 0; i < 4; ++i) {
    canvas->Draw(digits, {shown[i] * kDigitWidth, 0, kDigitWidth, kDigitHeight},
                 {kDigitColumns[i], kDigitsTop});
  }
  const bool minus = state.time_s >= 0 && state.remaining;
  if (!better.empty()) {
    const int sign = minus ? kMinusDigit : kBlankDigit;
    canvas->Draw(digits, {sign * kDigitWidth, 0, kDigitWidth, kDigitHeight},
                 {kMinusColumn, kDigitsTop});
  } else if (minus) {
    // The old digits have no minus: the bar in the middle of the 2 serves.
    canvas->Draw(digits, {2 * kDigitWidth + 2, 6, 5, 1}, {kMinusColumn + 4, kDigitsTop + 6});
  }
}

// In the rolled-up title bar, right-aligned before its buttons.
void DrawRolledTime(Canvas* canvas, const Skin& skin, const MainState& state) {
  if (state.time_s < 0) return;
  const int seconds = state.time_s % 60;
  const std::string digits = (state.remaining ? "-" : "") + std::to_string(state.time_s / 60) +
                             (seconds < 10 ? ":0" : ":") + std::to_string(seconds);
  const std::u16string text(digits.begin(), digits.end());
  DrawSkinText(canvas, skin.image(kelvo::kSkinText), text,
               {kRolledTimeRight - static_cast<int>(text.size()) * kLetterWidth, kRolledTimeTop});
}

void DrawSongText(Canvas* canvas, const MainState& state, const Bitmap& text) {
  const int top = kSongTextPlace.y + (kSongTextPlace.height - text.height) / 2;
  const Rect place = {kSongTextPlace.x, top, kSongTextPlace.width, text.height};
  if (text.width <= place.width) {
    canvas->Draw(text, {0, 0, place.width, place.height}, {place.x, place.y});
    return;
  }
  int from = state.scroll % text.width;
  for (int x = place.x; x < place.right();) {
    const int rest = text.width - from;
    const int width = rest < place.right() - x ? rest : place.right() - x;
    canvas->Draw(text, {from, 0, width, place.height}, {x, place.y});
    x += width;
    from = 0;
  }
}

// A number in skin letters, right-aligned; nothing for 0.
void DrawNumber(Canvas* canvas, const Skin& skin, int number, int letters, Point at) {
  if (number <= 0) return;
  std::u16string text;
  for (; number > 0 && static_cast<int>(text.size()) < letters; number /= 10) {
    text.insert(text.begin(), static_cast<char16_t>(u'0' + number % 10));
  }
  if (number > 0) text.assign(static_cast<size_t>(letters), u'9');
  at.x += (letters - static_cast<int>(text.size())) * kLetterWidth;
  DrawSkinText(canvas, skin.image(kelvo::kSkinText), text, at);
}

void DrawFormat(Canvas* canvas, const Skin& skin, const MainState& state) {
  DrawNumber(canvas, skin, state.bit_rate, 3, {111, 43});
  DrawNumber(canvas, skin, state.sample_rate, 2, {156, 43});
  const Bitmap& image = skin.image(kelvo::kSkinMonoStereo);
  canvas->Draw(image, {29, state.channels == 1 ? 0 : 12, 27, 12}, {212, 41});
  canvas->Draw(image, {0, state.channels == 2 ? 0 : 12, 29, 12}, {239, 41});
}

// `amount` of 0 to 100 chooses the background.
void DrawSlider(Canvas* canvas, const Skin& skin, SkinFile file, int column, Rect place, int amount,
                int thumb_x, bool pressed) {
  const Bitmap& image = skin.image(file);
  const int picture = Clamp(amount, 0, 100) * (kSliderPictures - 1) / 100;
  canvas->Draw(image, {column, picture * kSliderPictureStep, place.width, place.height},
               {place.x, place.y});
  canvas->Draw(image, {pressed ? 0 : 15, 422, 14, 11}, {thumb_x, place.y + 1});
}

void DrawPosition(Canvas* canvas, const Skin& skin, const MainState& state) {
  const Bitmap& image = skin.image(kelvo::kSkinPositionBar);
  const Rect& place = kPositionPlace;
  canvas->Draw(image, {0, 0, place.width, place.height}, {place.x, place.y});
  if (state.position < 0) return;
  const bool pressed = state.pressed == MainControl::kPosition;
  canvas->Draw(image, {pressed ? 278 : 248, 0, kPositionSlider.thumb, place.height},
               {kPositionSlider.ThumbAt(state.position), place.y});
}

}  // namespace

void DrawMain(Canvas* canvas, const Skin& skin, const MainState& state, const Bitmap& song_text) {
  canvas->Fill({0, 0, kMainSize.width, kMainSize.height}, 0);
  canvas->Draw(skin.image(kelvo::kSkinMain), {0, 0});
  DrawTitleBar(canvas, skin, state);
  if (state.rolled) DrawRolledTime(canvas, skin, state);
  DrawButtons(canvas, skin, state);
  DrawPlaySign(canvas, skin, state.sign);
  DrawTime(canvas, skin, state);
  DrawVisual(canvas, skin, state.visual);
  DrawSongText(canvas, state, song_text);
  DrawFormat(canvas, skin, state);
  DrawSlider(canvas, skin, kelvo::kSkinVolume, 0, kVolumePlace, state.volume,
             kVolumeSlider.ThumbAt(state.volume), state.pressed == MainControl::kVolume);
  DrawSlider(canvas, skin, kelvo::kSkinBalance, 9, kBalancePlace, std::abs(state.balance),
             kBalanceSlider.ThumbAt(state.balance + 100), state.pressed == MainControl::kBalance);
  DrawPosition(canvas, skin, state);
}

}  // namespace velmora
