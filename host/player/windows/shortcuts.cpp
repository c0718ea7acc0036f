#include "host/player/windows/commands.h"

namespace velmora {
namespace {

constexpr BYTE kKey = FVIRTKEY;
constexpr BYTE kControl = FVIRTKEY | FCONTROL;
constexpr BYTE kShift = FVIRTKEY | FSHIFT;
constexpr BYTE kAlt = FVIRTKEY | FALT;

ACCEL kShortcuts[] = {
    {kKey, 'Z', kCommandPrevious},
    {kKey, 'X', kCommandPlay},
    {kKey, 'C', kCommandPause},
    {kKey, 'V', kCommandStop},
    {kKey, 'B', kCommandNext},
    {kKey, VK_SPACE, kCommandPlayOrPause},
    {kKey, VK_LEFT, kCommandBack5Seconds},
    {kKey, VK_RIGHT, kCommandForward5Seconds},
    {kKey, 'S', kCommandShuffle},
    {kKey, 'R', kCommandRepeat},
    {kKey, 'L', kCommandOpenFiles},
    {kShift, 'L', kCommandOpenFolder},
    {kKey, VK_INSERT, kCommandAddFiles},
    {kKey, VK_ESCAPE, kCommandStopAdding},
    {kKey, 'J', kCommandJump},
    {kAlt, '3', kCommandEntryInfo},
    {kControl, 'S', kCommandSaveList},
    {kControl, 'A', kCommandSelectAll},
    {kControl, 'B', kCommandBookmarkAdd},
    {kControl, 'D', kCommandDoubleSize},
    {kControl, 'T', kCommandTimeMode},
    {kControl, 'W', kCommandShade},
    {kAlt, 'B', kCommandBookmarks},
    {kAlt, 'C', kCommandCatalog},
    {kAlt, 'E', kCommandEqualizerWindow},
    {kAlt, 'P', kCommandPlaylistWindow},
    {kKey, VK_F1, kCommandAbout},
    {kKey, VK_MEDIA_PREV_TRACK, kCommandPrevious},
    {kKey, VK_MEDIA_NEXT_TRACK, kCommandNext},
    {kKey, VK_MEDIA_PLAY_PAUSE, kCommandPlayOrPause},
    {kKey, VK_MEDIA_STOP, kCommandStop},
};

}  // namespace

HACCEL CreateShortcuts() {
  return CreateAcceleratorTableW(kShortcuts, sizeof kShortcuts / sizeof *kShortcuts);
}

}  // namespace velmora
