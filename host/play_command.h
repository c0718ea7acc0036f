#pragma once

#include <string>
#include <vector>

#include "host/library.h"
#include "host/sound_settings.h"

namespace velmora {

struct PlayOptions {
  std::vector<std::wstring> files;
  std::wstring wav_path;  // empty: the sound device, or "played.wav" where there is none
  SoundSettings sound;
};

// Plays the files one after the other and tells what it plays. The program's exit code: 0 when all
// were played, 1 when one could not be, 2 when the user interrupted.
int Play(const Library& library, const PlayOptions& options);

}  // namespace velmora
