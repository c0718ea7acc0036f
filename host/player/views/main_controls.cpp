#include "host/player/views/main_view.h"

namespace velmora {
namespace {

using kelvo::kSkinButtons;
using kelvo::kSkinShuffleRepeat;
using kelvo::kSkinTitleBar;
using Control = MainControl;

struct Area {
  MainControl control;
  Rect place;
};

constexpr Area kAreas[] = {
    {Control::kVolume, kVolumePlace},
    {Control::kBalance, kBalancePlace},
    {Control::kPosition, kPositionPlace},
    {Control::kTime, kTimePlace},
    {Control::kVisual, kVisualPlace},
    {Control::kSongText, kSongTextPlace},
    {Control::kTitleBar, {0, 0, kMainSize.width, kTitleBarHeight}},
};

}  // namespace

const MainButton kMainButtonTable[kMainButtons] = {
    {Control::kMenu, PlainButton({6, 3, 9, 9}, kSkinTitleBar, {0, 0}, {0, 9})},
    {Control::kMinimise, PlainButton({244, 3, 9, 9}, kSkinTitleBar, {9, 0}, {9, 9})},
    {Control::kShade, PlainButton({254, 3, 9, 9}, kSkinTitleBar, {0, 18}, {9, 18})},
    {Control::kClose, PlainButton({264, 3, 9, 9}, kSkinTitleBar, {18, 0}, {18, 9})},
    {Control::kPrevious, PlainButton({16, 88, 23, 18}, kSkinButtons, {0, 0}, {0, 18})},
    {Control::kPlay, PlainButton({39, 88, 23, 18}, kSkinButtons, {23, 0}, {23, 18})},
    {Control::kPause, PlainButton({62, 88, 23, 18}, kSkinButtons, {46, 0}, {46, 18})},
    {Control::kStop, PlainButton({85, 88, 23, 18}, kSkinButtons, {69, 0}, {69, 18})},
    {Control::kNext, PlainButton({108, 88, 22, 18}, kSkinButtons, {92, 0}, {92, 18})},
    {Control::kEject, PlainButton({136, 89, 22, 16}, kSkinButtons, {114, 0}, {114, 16})},
    {Control::kShuffle,
     {{164, 89, 47, 15}, kSkinShuffleRepeat, {28, 0}, {28, 15}, {28, 30}, {28, 45}}},
    {Control::kRepeat, {{210, 89, 28, 15}, kSkinShuffleRepeat, {0, 0}, {0, 15}, {0, 30}, {0, 45}}},
    {Control::kEqualizer,
     {{219, 58, 23, 12}, kSkinShuffleRepeat, {0, 61}, {46, 61}, {0, 73}, {46, 73}}},
    {Control::kPlaylist,
     {{242, 58, 23, 12}, kSkinShuffleRepeat, {23, 61}, {69, 61}, {23, 73}, {69, 73}}},
};

MainControl MainControlAt(Point point) {
  for (const MainButton& button : kMainButtonTable) {
    if (button.look.place.Contains(point)) return button.control;
  }
  for (const Area& area : kAreas) {
    if (area.place.Contains(point)) return area.control;
  }
  return Control::kNone;
}

}  // namespace velmora
