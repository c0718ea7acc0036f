// The commands of the program, and what they share: their options and the console.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/sound_state.h"

namespace velmora {

using Words = std::vector<std::wstring>;
using Command = int (*)(const Library& library, const Words& words);

// The player with its windows (player_command.cpp).
int PlayerCommand(const Library& library, const Words& words);
// Plays files, and those in folders, on the console, one after the other (play_command.cpp): 0 when
// all were played, 1 when one could not be, 2 when the user interrupted.
int PlayCommand(const Library& library, const Words& words);
// What files say about themselves (info_command.cpp).
int InfoCommand(const Library& library, const Words& words);
// Whether a library does what the contract says, sentence by sentence (check_command.cpp); it loads
// that library itself. 0 when every sentence holds, 1 when one does not, 2 when nothing can be
// checked, 3 when the library crashed or did not return.
int CheckCommand(const Words& words);

// The command line of `velmora play`.

struct PlayOptions {
  std::vector<std::wstring> files;
  std::wstring wav_path;  // empty: the sound device
  EqualizerState sound;   // the equalizer is on once an option was given for it
};

// Complains on the console and returns false when the words make no sense. Presets are those of
// the library, from the folder beside the program.
bool ParsePlayOptions(const Library& library, const std::vector<std::wstring>& words,
                      PlayOptions* options);

// "; did you mean NAME?" with the name that is most like the word; empty when none is.
std::wstring DidYouMean(const std::wstring& word, const std::vector<std::wstring>& names);

// Text to the console (or, as UTF-8, to wherever standard output goes), and Ctrl-C.

// printf-style, wide format.
void Print(const wchar_t* format, ...);
void PrintError(const wchar_t* format, ...);

// An event that Ctrl-C, Ctrl-Break or closing the console signals.
HANDLE InterruptEvent();
bool Interrupted();

}  // namespace velmora
