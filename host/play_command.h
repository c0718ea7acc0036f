#pragma once

#include <string>
#include <vector>

#include "host/library.h"
#include "host/sound_settings.h"

namespace velmora {

struct PlayOptions {
  std::vector<std::wstring> files;
  std::wstring wav_path;  // empty: the sound device, or "played.wav" where there is none
  int start_s = 0;        // where the first file starts
  SoundSettings sound;
};

// Reads the words of a command line; complains and returns false when they make no sense.
bool ParsePlayOptions(const std::vector<std::wstring>& words, PlayOptions* options);

// Plays the files one after the other and tells what it plays. The program's exit code: 0 when all
// were played, 1 when one could not be, 2 when the user interrupted, which also stores the place as
// the last-played bookmark.
int Play(const Library& library, const PlayOptions& options);

}  // namespace velmora
