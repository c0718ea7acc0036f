#include "host/player/windows/equalizer_window.h"

#include <math.h>

#include <algorithm>
#include <iterator>

#include "host/player/windows/player_app.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr const wchar_t* kSliderNames[kEqualizerSliders] = {
    L"",      L"60 HZ", L"170 HZ", L"310 HZ", L"600 HZ", L"1 KHZ",
    L"3 KHZ", L"6 KHZ", L"12 KHZ", L"14 KHZ", L"16 KHZ",
};

constexpr int kLightMs = 500;
constexpr int kMeasured = 500;       // frequencies
constexpr float kMostDecibels = 16;  // at the edges of the curve

// Where a slider changes nothing.
int Neutral(int slider) {
  const EqualizerState neutral;
  return slider == 0 ? neutral.preamp : neutral.bands[slider - 1];
}

// Where a column of the curve lies between 20 Hz (0) and 20 kHz (1) for the ear: each band has its
// column, and between them it goes on evenly.
float PlaceOfColumn(int x) {
  constexpr float kBands[] = {60, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};
  constexpr float kFirstColumn = 2;
  constexpr float kColumns = 12;  // from one band to the next
  const float band = std::clamp((static_cast<float>(x) - kFirstColumn) / kColumns, 0.0f, 9.0f);
  const int below = std::min(static_cast<int>(band), 8);
  const float share = band - static_cast<float>(below);
  const float ratio = kBands[below + 1] / kBands[below];
  return log10f(kBands[below] * powf(ratio, share) / 20) / 3;
}

bool Same(const EqualizerState& a, const EqualizerState& b) {
  return a.on == b.on && a.preamp == b.preamp && a.bass == b.bass &&
         std::equal(std::begin(a.bands), std::end(a.bands), b.bands);
}

}  // namespace

bool EqualizerWindow::Create(HWND owner) {
  return SkinWindow::Create(L"VelmoraEqualizer", L"Velmora Equalizer", owner);
}

void EqualizerWindow::Tick(bool clips, int milliseconds) {
  const int before = light_ms_;
  light_ms_ = clips ? kLightMs : std::max(0, light_ms_ - milliseconds);
  if ((before > 0) != (light_ms_ > 0)) Refresh();
}

void EqualizerWindow::Draw(Canvas* canvas) {
  const EqualizerState& sound = app_.player().equalizer();
  EqualizerViewState state;
  state.active = active();
  const bool is_slider = held_.control == EqualizerControl::kSlider;
  state.pressed = inside_ || is_slider ? held_.control : EqualizerControl::kNone;
  state.pressed_slider = held_.slider;
  state.on = sound.on;
  state.bass = sound.bass > 0;
  state.clips = light_ms_ > 0;
  state.sliders[0] = sound.preamp;
  std::copy(std::begin(sound.bands), std::end(sound.bands), state.sliders + 1);
  UpdateCurve();
  std::copy(std::begin(curve_), std::end(curve_), state.curve);
  DrawEqualizer(canvas, app_.skin(), state);
}

std::vector<Tip> EqualizerWindow::OwnTips() const {
  return {{EqualizerButtonPlace(EqualizerControl::kClose), TEXT_CLOSE},
          {EqualizerButtonPlace(EqualizerControl::kOn), TEXT_TIP_EQUALIZER_ON},
          {EqualizerButtonPlace(EqualizerControl::kBass), TEXT_BASS},
          {EqualizerButtonPlace(EqualizerControl::kPresets), TEXT_PRESETS},
          {EqualizerSliderPlace(0), TEXT_TIP_PREAMP}};
}

// What the effects really do, measured with effects of our own.
void EqualizerWindow::UpdateCurve() {
  const EqualizerState& sound = app_.player().equalizer();
  if (meter_ && Same(sound, curve_of_)) return;
  if (!meter_) meter_ = std::make_unique<ResponseMeter>();
  curve_of_ = sound;
  float decibels[kMeasured];
  meter_->Measure(sound, decibels, kMeasured);
  for (int x = 0; x < kCurvePlace.width; ++x) {
    const float level = decibels[lroundf(PlaceOfColumn(x) * (kMeasured - 1))];
    curve_[x] = static_cast<int>(
        lroundf((kMostDecibels - level) * (kCurvePlace.height - 1) / (2 * kMostDecibels)));
  }
}

void EqualizerWindow::SetSlider(int slider, int value) {
  EqualizerState sound = app_.player().equalizer();
  (slider == 0 ? sound.preamp : sound.bands[slider - 1]) = static_cast<uint8_t>(value);
  app_.player().SetEqualizer(sound);
  const int steps = Neutral(slider) - value;
  const std::wstring gain = (steps > 0 ? L"+" : L"") + std::to_wstring(steps);
  app_.ShowHint(slider == 0 ? Text(TEXT_HINT_PREAMP, {gain})
                            : Text(TEXT_HINT_BAND, {kSliderNames[slider], gain}));
  Refresh();
}

void EqualizerWindow::OnPress(Point point) {
  held_ = EqualizerHitAt(point);
  inside_ = true;
  OnDrag(point);
}

void EqualizerWindow::OnDrag(Point point) {
  inside_ = EqualizerHitAt(point).control == held_.control;
  if (held_.control == EqualizerControl::kSlider) {
    SetSlider(held_.slider, kGainSlider.ValueAt(point.y));
  }
  Refresh();
}

void EqualizerWindow::OnRelease(Point point) {
  const EqualizerControl control = held_.control;
  OnCancel();
  if (EqualizerHitAt(point).control == control) Click(control);
}

void EqualizerWindow::OnCancel() {
  held_ = {EqualizerControl::kNone, 0};
  Refresh();
}

void EqualizerWindow::OnDoubleClick(Point point) {
  const EqualizerHit hit = EqualizerHitAt(point);
  if (hit.control == EqualizerControl::kSlider) {
    SetSlider(hit.slider, Neutral(hit.slider));
  } else {
    OnPress(point);
  }
}

void EqualizerWindow::Click(EqualizerControl control) {
  switch (control) {
    case EqualizerControl::kClose:
      app_.Do(kCommandEqualizerWindow);
      break;
    case EqualizerControl::kOn:
      app_.Do(kCommandEqualizerOn);
      break;
    case EqualizerControl::kBass:
      app_.Do(kCommandBassNext);
      break;
    case EqualizerControl::kPresets: {
      const Rect window = place();
      app_.ShowPresetMenu({window.x + 217 * app_.scale(), window.y + 30 * app_.scale()});
      break;
    }
    default:
      break;
  }
}

// Over a slider the wheel turns it; elsewhere the volume.
void EqualizerWindow::OnWheel(int notches) {
  POINT mouse;
  GetCursorPos(&mouse);
  const Rect window = place();
  const int scale = app_.scale();
  const EqualizerHit hit =
      EqualizerHitAt({(mouse.x - window.x) / scale, (mouse.y - window.y) / scale});
  if (hit.control != EqualizerControl::kSlider) {
    app_.ChangeVolume(notches * 4);
    return;
  }
  const EqualizerState& sound = app_.player().equalizer();
  const int before = hit.slider == 0 ? sound.preamp : sound.bands[hit.slider - 1];
  SetSlider(hit.slider, Clamp(before - notches, 0, kGainSlider.most));
}

void EqualizerWindow::OnClose() {
  app_.Do(kCommandEqualizerWindow);
}

bool EqualizerWindow::IsHandle(Point point) const {
  const EqualizerControl control = EqualizerHitAt(point).control;
  return control == EqualizerControl::kTitleBar || control == EqualizerControl::kNone;
}

}  // namespace velmora
