// What the main window shows, and what is where in it.
#pragma once

#include <stdint.h>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"
#include "host/player/views/controls.h"

namespace velmora {

// The small picture of the sound in the main window.

constexpr Rect kVisualPlace = {24, 43, 76, 16};
constexpr int kVisualBars = 19;  // three pixels wide, one apart

enum class VisualMode { kOff = 0, kSpectrum = 1, kWave = 2 };  // numbers as they are kept

struct VisualState {
  VisualMode mode = VisualMode::kOff;
  // Heights, 0 to 15.
  uint8_t bars[kVisualBars] = {};
  uint8_t peaks[kVisualBars] = {};  // of the marks above the bars; 0: none
  uint8_t wave[kVisualPlace.width] = {};
};

void DrawVisual(Canvas* canvas, const Skin& skin, const VisualState& state);

constexpr Size kMainSize = {275, 116};
constexpr int kTitleBarHeight = 14;
constexpr Rect kSongTextPlace = {111, 27, 154, 6};

enum class MainControl {
  kNone,
  // Buttons, in the order of the table in main_controls.cpp.
  kMenu,
  kMinimise,
  kShade,
  kClose,
  kPrevious,
  kPlay,
  kPause,
  kStop,
  kNext,
  kEject,
  kShuffle,
  kRepeat,
  kEqualizer,
  kPlaylist,
  // Sliders.
  kVolume,
  kBalance,
  kPosition,
  // Areas to click on.
  kTime,
  kVisual,
  kSongText,
  kTitleBar,
};

MainControl MainControlAt(Point point);

constexpr Slider kVolumeSlider = {107, 68, 14, 100};
constexpr Slider kBalanceSlider = {177, 38, 14, 200};  // 100 is the middle
constexpr Slider kPositionSlider = {16, 248, 29, 1000};

enum class PlaySign { kStopped, kPlaying, kPaused };

struct MainState {
  bool active = true;   // the window has the keyboard
  bool rolled = false;  // only the title bar is left
  MainControl pressed = MainControl::kNone;

  PlaySign sign = PlaySign::kStopped;
  int time_s = -1;         // the time to show; negative: none
  bool remaining = false;  // with a minus before it
  int scroll = 0;          // pixels by which the song text has moved to the left
  int bit_rate = 0;        // kbit/s; 0: unknown
  int sample_rate = 0;     // kHz; 0: unknown
  int channels = 0;        // 1, 2; 0: unknown
  int position = -1;       // of kPositionSlider; negative: there is none
  int volume = 0;          // 0 to 100
  int balance = 0;         // -100 to 100
  bool shuffle = false;
  bool repeat = false;
  bool equalizer_open = false;
  bool playlist_open = false;
  VisualState visual;
};

// Draws all of the window. `song_text` is a picture of the song's text in one line, about its
// place's height; one that is wider than its place scrolls round.
void DrawMain(Canvas* canvas, const Skin& skin, const MainState& state, const Bitmap& song_text);

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
