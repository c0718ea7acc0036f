#pragma once

#include <memory>

#include "host/player/response.h"
#include "host/player/views/equalizer_view.h"
#include "host/player/windows/skin_window.h"

namespace velmora {

class EqualizerWindow final : public SkinWindow {
 public:
  explicit EqualizerWindow(PlayerApp& app) : SkinWindow(app) {}

  bool Create(HWND owner);
  // This time has passed while music plays; the light shows for a moment that the effects clip.
  void Tick(bool clips, int milliseconds);

 private:
  Size CanvasSize() const override { return kEqualizerSize; }
  void Draw(Canvas* canvas) override;
  std::vector<Tip> OwnTips() const override;
  void OnPress(Point point) override;
  void OnDrag(Point point) override;
  void OnRelease(Point point) override;
  void OnCancel() override;
  void OnDoubleClick(Point point) override;
  void OnWheel(int notches) override;
  void OnClose() override;
  bool IsHandle(Point point) const override;

  void UpdateCurve();
  void SetSlider(int slider, int value);
  void Click(EqualizerControl control);

  EqualizerHit held_ = {EqualizerControl::kNone, 0};
  bool inside_ = false;
  int light_ms_ = 0;
  std::unique_ptr<ResponseMeter> meter_;  // made when the curve is first seen
  EqualizerState curve_of_;
  int curve_[kCurvePlace.width] = {};
};

}  // namespace velmora
