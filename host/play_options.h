// The command line of `velmora play`.
#pragma once

#include <string>
#include <vector>

#include "host/library.h"
#include "host/sound_state.h"

namespace velmora {

struct PlayOptions {
  std::vector<std::wstring> files;
  std::wstring wav_path;  // empty: the sound device, or "played.wav" where there is none
  EqualizerState sound;   // the equalizer is on once an option was given for it
};

// Complains on the console and returns false when the words make no sense. Presets are those of
// the library, from the folder beside the program.
bool ParsePlayOptions(const Library& library, const std::vector<std::wstring>& words,
                      PlayOptions* options);

}  // namespace velmora
