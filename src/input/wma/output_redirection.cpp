#include "input/wma/output_redirection.h"

#include <mmsystem.h>

#include "base/sync/shared_word.h"
#include "base/windows/player_control.h"

namespace kelvo {
namespace {

constexpr UINT kNoDriver = 6;

using WaveOutWrite = UINT(WINAPI*)(HANDLE device, void* header, UINT header_bytes);

// One for the module: the component calls a plain function.
struct Redirection {
  EffectsProcessor* effects;
  AudioTap* tap;
  void* original;
};
Redirection g_redirection = {};

void* Address(FARPROC function) noexcept {
  return reinterpret_cast<void*>(function);
}

void* OwnAddress() noexcept {
  return reinterpret_cast<void*>(&TappedWaveOutWrite);
}

void* FindAnchor(HMODULE player) noexcept {
  return player ? Address(GetProcAddress(player, kPlayerAnchorExport)) : nullptr;
}

// A word of somebody else's memory that other threads may be reading.
using Word = SharedPointer<void*>;
static_assert(sizeof(Word) == sizeof(void*));

// False when the page stays read-only. Code may lie on it and be running, so it stays executable.
bool Overwrite(Word* word, void* value) noexcept {
  DWORD protection = 0;
  const bool unprotected =
      VirtualProtect(word, sizeof(*word), PAGE_EXECUTE_READWRITE, &protection) != 0;
  if (!unprotected && IsBadWritePtr(word, sizeof(*word))) return false;
  *word = value;
  if (unprotected) VirtualProtect(word, sizeof(*word), protection, &protection);
  return true;
}

}  // namespace

int ReplaceWords(void* start, void* from, void* to, void** replaced) noexcept {
  int count = 0;
  Word* word = static_cast<Word*>(start);
  for (int i = 0; i < kScanWords && !IsBadReadPtr(word, sizeof(*word)); ++i, ++word) {
    if (*word != from || static_cast<void*>(word) == replaced) continue;
    if (replaced && *replaced != from) *replaced = from;  // once: then others read it
    if (Overwrite(word, to)) ++count;
  }
  return count;
}

bool InstallOutputTap(HMODULE player, HMODULE core, EffectsProcessor* effects,
                      AudioTap* tap) noexcept {
  void* const anchor = FindAnchor(player);
  void* const write = core ? Address(GetProcAddress(core, "waveOutWrite")) : nullptr;
  if (!anchor || !write) return false;
  g_redirection.effects = effects;
  g_redirection.tap = tap;
  ReplaceWords(anchor, write, OwnAddress(), &g_redirection.original);
  return true;
}

void RestoreOutput(HMODULE player) noexcept {
  void* const anchor = FindAnchor(player);
  if (anchor && g_redirection.original) {
    ReplaceWords(anchor, OwnAddress(), g_redirection.original, nullptr);
  }
}

void ForgetOutputTap() noexcept {
  g_redirection = {};
}

UINT WINAPI TappedWaveOutWrite(HANDLE device, void* header, UINT header_bytes) noexcept {
  const Redirection& to = g_redirection;
  if (const auto* block = static_cast<const WAVEHDR*>(header)) {
    int16_t* const samples = reinterpret_cast<int16_t*>(block->lpData);
    const DWORD bytes = block->dwBufferLength;
    if (to.effects) {
      // Each stage gets a pointer of its own: an external one might move it.
      int16_t* for_equalizer = samples;
      int16_t* for_bass = samples;
      to.effects->ProcessEqualizer(&for_equalizer, static_cast<int32_t>(bytes));
      to.effects->ProcessBass(&for_bass, static_cast<int32_t>(bytes));
    }
    if (to.tap) to.tap->Store(samples, bytes);
  }
  const auto original = reinterpret_cast<WaveOutWrite>(to.original);
  return original ? original(device, header, header_bytes) : kNoDriver;
}

}  // namespace kelvo
