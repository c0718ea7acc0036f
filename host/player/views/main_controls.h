#pragma once

#include "host/player/views/controls.h"
#include "host/player/views/main_view.h"

namespace velmora {

struct MainButton {
  MainControl control;
  ButtonLook look;
};

constexpr int kMainButtons = 14;
// The shade button while the window is rolled up.
constexpr ButtonLook kUnshadeLook =
    PlainButton({254, 3, 9, 9}, kelvo::kSkinTitleBar, {0, 27}, {9, 27});
extern const MainButton kMainButtonTable[kMainButtons];

constexpr Rect kTimePlace = {36, 26, 63, 13};
constexpr Rect kVolumePlace = {107, 57, 68, 13};
constexpr Rect kBalancePlace = {177, 57, 38, 13};
constexpr Rect kPositionPlace = {16, 72, 248, 10};

}  // namespace velmora
