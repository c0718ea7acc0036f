#include "host/player/views/equalizer_view.h"

#include <algorithm>
#include <cstdlib>

#include "host/player/views/controls.h"

namespace velmora {
namespace {

using kelvo::kSkinEqualizer;
using Control = EqualizerControl;

constexpr Rect kClipLight = {kCurvePlace.right() - 5, kCurvePlace.y + 1, 4, 4};
constexpr Colour kClipColour = 0xFF2020;

constexpr int kSliderWidth = 14;
constexpr int kSliderTop = 38;
constexpr int kSliderHeight = 63;
constexpr int kThumbSize = 11;

constexpr struct {
  EqualizerControl control;
  ButtonLook look;
} kButtons[] = {
    {Control::kClose, PlainButton({264, 3, 9, 9}, kSkinEqualizer, {0, 116}, {0, 125})},
    {Control::kOn,
     {{14, 18, 26, 12}, kSkinEqualizer, {10, 119}, {128, 119}, {69, 119}, {187, 119}}},
    {Control::kBass,
     {{40, 18, 32, 12}, kSkinEqualizer, {36, 119}, {154, 119}, {95, 119}, {213, 119}}},
    {Control::kPresets, PlainButton({217, 18, 44, 12}, kSkinEqualizer, {224, 164}, {224, 176})},
};

void DrawSliders(Canvas* canvas, const Skin& skin, const EqualizerViewState& state) {
  const Bitmap& image = skin.image(kSkinEqualizer);
  for (int i = 0; i < kEqualizerSliders; ++i) {
    const Rect place = EqualizerSliderPlace(i);
    const int value = Clamp(state.sliders[i], 0, kGainSlider.most);
    const int picture = kGainSlider.most - value;  // the first one is for the strongest cut
    canvas->Draw(image,
                 {13 + 15 * (picture % 14), picture < 14 ? 164 : 229, place.width, place.height},
                 {place.x, place.y});
    const bool pressed = state.pressed == Control::kSlider && state.pressed_slider == i;
    canvas->Draw(image, {0, pressed ? 176 : 164, kThumbSize, kThumbSize},
                 {place.x + 1, kGainSlider.ThumbAt(value)});
  }
}

void DrawCurve(Canvas* canvas, const Skin& skin, const EqualizerViewState& state) {
  const Bitmap& image = skin.image(kSkinEqualizer);
  const Rect& place = kCurvePlace;
  canvas->Draw(image, {0, 294, place.width, place.height}, {place.x, place.y});
  const int lowest = place.height - 1;
  const int preamp = state.sliders[0] * lowest / kGainSlider.most;
  canvas->Draw(image, {0, 314, place.width, 1}, {place.x, place.y + Clamp(preamp, 0, lowest)});
  int before = Clamp(state.curve[0], 0, lowest);
  for (int x = 0; x < place.width; ++x) {
    const int row = Clamp(state.curve[x], 0, lowest);
    // From the row after the one before, so that the line is one pixel wide and has no gaps.
    const int first = row > before ? before + 1 : row;
    const int last = row < before ? before - 1 : row;
    canvas->Draw(image, {115, 294 + first, 1, last - first + 1}, {place.x + x, place.y + first});
    before = row;
  }
}

bool IsOn(EqualizerControl control, const EqualizerViewState& state) {
  return (control == Control::kOn && state.on) || (control == Control::kBass && state.bass);
}

}  // namespace

Rect EqualizerSliderPlace(int slider) {
  return {slider == 0 ? 21 : 78 + 18 * (slider - 1), kSliderTop, kSliderWidth, kSliderHeight};
}

Rect EqualizerButtonPlace(EqualizerControl control) {
  for (const auto& button : kButtons) {
    if (button.control == control) return button.look.place;
  }
  return {0, 0, 0, 0};
}

EqualizerHit EqualizerHitAt(Point point) {
  for (const auto& button : kButtons) {
    if (button.look.place.Contains(point)) return {button.control, 0};
  }
  for (int i = 0; i < kEqualizerSliders; ++i) {
    if (EqualizerSliderPlace(i).Contains(point)) return {Control::kSlider, i};
  }
  const bool title = Rect{0, 0, kEqualizerSize.width, 14}.Contains(point);
  return {title ? Control::kTitleBar : Control::kNone, 0};
}

void DrawEqualizer(Canvas* canvas, const Skin& skin, const EqualizerViewState& state) {
  const Bitmap& image = skin.image(kSkinEqualizer);
  canvas->Fill({0, 0, kEqualizerSize.width, kEqualizerSize.height}, 0);
  canvas->Draw(image, {0, 0, kEqualizerSize.width, kEqualizerSize.height}, {0, 0});
  canvas->Draw(image, {0, state.active ? 134 : 149, kEqualizerSize.width, 14}, {0, 0});
  for (const auto& button : kButtons) {
    DrawButton(canvas, skin, button.look, state.pressed == button.control,
               IsOn(button.control, state));
  }
  DrawSliders(canvas, skin, state);
  DrawCurve(canvas, skin, state);
  if (state.clips) canvas->Fill(kClipLight, kClipColour);
}

}  // namespace velmora
