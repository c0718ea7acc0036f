#pragma once

#include <windows.h>

#include <mmsystem.h>

namespace kelvo {

// The desktop's sound functions. Loaded at run time: linked, they would have the names of our own
// exports. A function that is missing is null.
struct Winmm {
  UINT(WINAPI* get_num_devs)();
  MMRESULT(WINAPI* open)(HWAVEOUT*, UINT, const WAVEFORMATEX*, DWORD_PTR, DWORD_PTR, DWORD);
  MMRESULT(WINAPI* close)(HWAVEOUT);
  MMRESULT(WINAPI* prepare_header)(HWAVEOUT, WAVEHDR*, UINT);
  MMRESULT(WINAPI* unprepare_header)(HWAVEOUT, WAVEHDR*, UINT);
  MMRESULT(WINAPI* write)(HWAVEOUT, WAVEHDR*, UINT);
  MMRESULT(WINAPI* pause)(HWAVEOUT);
  MMRESULT(WINAPI* restart)(HWAVEOUT);
  MMRESULT(WINAPI* reset)(HWAVEOUT);
  MMRESULT(WINAPI* get_position)(HWAVEOUT, MMTIME*, UINT);
  MMRESULT(WINAPI* set_volume)(HWAVEOUT, DWORD);
};

const Winmm& LoadWinmm() noexcept;

// Calls one of them; without it there is no driver.
template <class Function, class... Args>
MMRESULT CallWinmm(Function Winmm::*function, Args... args) noexcept {
  const auto call = LoadWinmm().*function;
  return call ? call(args...) : MMSYSERR_NODRIVER;
}

}  // namespace kelvo
