// What the user can ask the player for; also the numbers of menu items and shortcuts.
#pragma once

#include <windows.h>

namespace velmora {

enum UserCommand : int {
  kCommandNone = 0,
  kCommandPrevious = 100,
  kCommandPlay,
  kCommandPause,
  kCommandPlayOrPause,
  kCommandStop,
  kCommandNext,
  kCommandBack5Seconds,
  kCommandForward5Seconds,
  kCommandVolumeUp,
  kCommandVolumeDown,
  kCommandShuffle,
  kCommandRepeat,
  kCommandTimeMode,

  kCommandOpenFiles,
  kCommandOpenFolder,
  kCommandAddFiles,
  kCommandAddFolder,
  kCommandClearList,
  kCommandRemoveSelected,
  kCommandCropSelected,
  kCommandSelectAll,
  kCommandSelectNone,
  kCommandSelectInvert,
  kCommandSaveList,
  kCommandSortTitle,
  kCommandSortName,
  kCommandSortPath,
  kCommandSortReverse,
  kCommandSortShuffle,
  kCommandJump,
  kCommandEntryPlay,
  kCommandEntryInfo,
  kCommandStopAdding,

  kCommandCatalog,
  kCommandBookmarkAdd,
  kCommandBookmarks,
  kCommandPresetSave,
  kCommandEqualizerOn,
  kCommandBassNext,

  kCommandEqualizerWindow,
  kCommandPlaylistWindow,
  kCommandDoubleSize,
  kCommandShade,
  kCommandMinimise,
  kCommandSkinFile,
  kCommandSkinFolder,
  kCommandVisualNext,
  kCommandVisualOff,
  kCommandVisualSpectrum,
  kCommandVisualWave,
  kCommandAbout,
  kCommandExit,

  // Ranges: the item's place in a list is added.
  kCommandBass = 1000,        // strengths 0 to 4
  kCommandLanguage = 1100,    // languages found
  kCommandSkin = 1200,        // the default skin, then those found
  kCommandPresetLoad = 2000,  // presets found
  kCommandPresetDelete = 3000,
  kCommandRangeEnd = 4000,
};

// The place in the list when `command` belongs to the range that starts at `first`.
constexpr bool InRange(int command, UserCommand first, UserCommand end, int* place) {
  *place = command - first;
  return command >= first && command < end;
}

// The keys that work in all of the player's windows, as their commands; null without memory.
HACCEL CreateShortcuts();

}  // namespace velmora
