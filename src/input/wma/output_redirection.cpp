#include "input/wma/output_redirection.h"

#include <mmsystem.h>

#include "input/wma/player_control.h"

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

// Code may lie on the same page and be running, so the page stays executable.
class WritableWord {
 public:
  explicit WritableWord(void** word) noexcept : word_(word) {
    ok_ = VirtualProtect(word, sizeof(*word), PAGE_EXECUTE_READWRITE, &protection_) != 0;
  }
  ~WritableWord() {
    if (ok_) VirtualProtect(word_, sizeof(*word_), protection_, &protection_);
  }
  WritableWord(const WritableWord&) = delete;
  WritableWord& operator=(const WritableWord&) = delete;
  explicit operator bool() const noexcept { return ok_; }

 private:
  void** word_;
  DWORD protection_ = 0;
  bool ok_;
};

}  // namespace

int ReplaceWords(void* start, void* from, void* to, void** replaced) noexcept {
  int count = 0;
  void** word = static_cast<void**>(start);
  for (int i = 0; i < kScanWords && !IsBadReadPtr(word, sizeof(*word)); ++i, ++word) {
    if (__atomic_load_n(word, __ATOMIC_RELAXED) != from) continue;
    if (replaced) *replaced = from;
    const WritableWord writable(word);
    if (!writable) continue;
    __atomic_store_n(word, to, __ATOMIC_RELAXED);
    ++count;
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
