// What the player keeps from one run to the next, and its text. Portable.
#pragma once

#include <stddef.h>

#include <string>
#include <vector>

#include "host/sound_state.h"

namespace velmora {

constexpr size_t kMaxSessionTracks = 20000;

struct WindowPlace {
  bool open = false;
  int x = 0;
  int y = 0;
  int width = 0;  // 0: the window's own size
  int height = 0;
};

struct Session {
  int volume = 100;
  int balance = 0;
  bool shuffle = false;
  bool repeat = false;
  EqualizerState equalizer;
  std::string skin;  // path of a folder or an archive, UTF-8; empty: the default skin
  bool double_size = false;
  bool remaining_time = false;  // the time counts down
  int visual = 1;               // the picture of the sound: 0 off, 1 spectrum, 2 wave
  WindowPlace main_window = {true};
  WindowPlace equalizer_window;
  WindowPlace playlist_window;
  std::vector<std::string> tracks;  // full paths, UTF-8
  size_t current = 0;               // of the tracks
};

// Lines "name=value", one "track=" for each track.
std::string PrintSession(const Session& session);
// Whatever a line says that makes no sense (a number out of range, an unknown name) leaves the
// value as it is without the line.
Session ParseSession(const std::string& text);

}  // namespace velmora
