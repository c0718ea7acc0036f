// The way into the player component's audio: its calls of waveOutWrite go through the library,
// because the pointers through which it calls are overwritten.
#pragma once

#include <windows.h>

#include "input/wma/audio_tap.h"
#include "kelvo/effects_processor.h"

namespace kelvo {

// Replaces each word equal to `from` by `to`, from the word at `start` on for at most kScanWords
// words, and stops where memory cannot be read; a word that cannot be written is left. *replaced
// (null is allowed) becomes `from` before the first word changes, because other threads may be
// calling through it, and is itself left alone. Returns how many words were changed.
inline constexpr int kScanWords = 100000;
int ReplaceWords(void* start, void* from, void* to, void** replaced) noexcept;

// Redirects the component `player` from the waveOutWrite of `core`; either may be null. Each block
// then runs through the equalizer and the bass stage of `effects`, is stored in `tap`, and goes on
// to the device. Both are borrowed until ForgetOutputTap. False when a module, the component's
// anchor export or the function is missing: then nothing is redirected.
bool InstallOutputTap(HMODULE player, HMODULE core, EffectsProcessor* effects,
                      AudioTap* tap) noexcept;

// For the library's unloading, which takes the code away that calls are redirected to: the
// component (none when null) calls the original again. A call that is under way still gets through;
// once the control is gone there can be none, and ForgetOutputTap lets go of what was borrowed.
void RestoreOutput(HMODULE player) noexcept;
void ForgetOutputTap() noexcept;

// What the component calls instead of waveOutWrite, on its audio thread. `header` is a WAVEHDR. The
// result is the original's; 6 ("no driver") when none is known.
UINT WINAPI TappedWaveOutWrite(HANDLE device, void* header, UINT header_bytes) noexcept;

}  // namespace kelvo
