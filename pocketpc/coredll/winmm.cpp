#include "pocketpc/coredll/winmm.h"

#include <string.h>

namespace kelvo {
namespace {

template <class Function>
void Find(HMODULE module, const char* name, Function* function) noexcept {
  const FARPROC found = module ? GetProcAddress(module, name) : nullptr;
  static_assert(sizeof(found) == sizeof(*function));
  memcpy(function, &found, sizeof(found));
}

Winmm Load() noexcept {
  const HMODULE module = LoadLibraryW(L"winmm.dll");  // for the life of the process
  Winmm winmm;
  Find(module, "waveOutGetNumDevs", &winmm.get_num_devs);
  Find(module, "waveOutOpen", &winmm.open);
  Find(module, "waveOutClose", &winmm.close);
  Find(module, "waveOutPrepareHeader", &winmm.prepare_header);
  Find(module, "waveOutUnprepareHeader", &winmm.unprepare_header);
  Find(module, "waveOutWrite", &winmm.write);
  Find(module, "waveOutPause", &winmm.pause);
  Find(module, "waveOutRestart", &winmm.restart);
  Find(module, "waveOutReset", &winmm.reset);
  Find(module, "waveOutGetPosition", &winmm.get_position);
  Find(module, "waveOutSetVolume", &winmm.set_volume);
  return winmm;
}

}  // namespace

const Winmm& LoadWinmm() noexcept {
  static const Winmm winmm = Load();
  return winmm;
}

}  // namespace kelvo
