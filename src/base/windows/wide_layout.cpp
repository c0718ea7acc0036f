#include "base/windows/dialog.h"

namespace kelvo {
namespace {

constexpr int kNarrowField = 100;  // pixels: for numbers, which need no more

bool IsButton(HWND control) noexcept {
  return (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0;
}

RECT PlaceIn(HWND dialog, HWND control) noexcept {
  RECT place = {};
  GetWindowRect(control, &place);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

}  // namespace

int ExtraWidth(HWND window) noexcept {
  RECT client = {};
  GetClientRect(window, &client);
  return client.right > kDeviceWidth ? client.right - kDeviceWidth : 0;
}

void WideLayout::Fit(HWND dialog) noexcept {
  const int width = kDeviceWidth + ExtraWidth(dialog);
  const int wider = width - width_;
  width_ = width;
  if (wider == 0) return;
  LONG edge = 0;  // where the fields end
  for (HWND control = GetWindow(dialog, GW_CHILD); control;
       control = GetWindow(control, GW_HWNDNEXT)) {
    const RECT place = PlaceIn(dialog, control);
    if (!IsButton(control) && place.right > edge) edge = place.right;
  }
  for (HWND control = GetWindow(dialog, GW_CHILD); control;
       control = GetWindow(control, GW_HWNDNEXT)) {
    RECT place = PlaceIn(dialog, control);
    if (IsButton(control)) {
      place.left += wider;
      place.right += wider;
    } else if (place.right == edge && place.right - place.left >= kNarrowField) {
      place.right += wider;
    } else {
      continue;
    }
    MoveWindow(control, place.left, place.top, place.right - place.left, place.bottom - place.top,
               TRUE);
  }
}

}  // namespace kelvo
