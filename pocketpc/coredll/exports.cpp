// What the DLL exports. Each waveOut function goes to the sink device behind its handle or to the
// sound system. The software input panel is not there, because a desktop has a keyboard: what is
// asked for is only remembered.
#define _WINMM_  // we define what the header would import
#include <windows.h>

#include <mmsystem.h>

#include "pocketpc/coredll/sink.h"
#include "pocketpc/coredll/volume.h"
#include "pocketpc/coredll/winmm.h"

using namespace kelvo;

namespace {

LONG g_panel_shown = 0;

}  // namespace

extern "C" {

UINT WINAPI waveOutGetNumDevs() {
  if (SinkWanted()) return 1;
  const Winmm& winmm = LoadWinmm();
  return winmm.get_num_devs ? winmm.get_num_devs() : 0;
}

MMRESULT WINAPI waveOutOpen(HWAVEOUT* device, UINT id, const WAVEFORMATEX* format,
                            DWORD_PTR callback, DWORD_PTR context, DWORD flags) {
  if (!SinkWanted()) {
    const MMRESULT result = CallWinmm(&Winmm::open, device, id, format, callback, context, flags);
    if (result == MMSYSERR_NOERROR && !(flags & WAVE_FORMAT_QUERY)) AddSystemDevice(*device);
    return result;
  }
  return OpenSink(device, format, callback, flags);
}

MMRESULT WINAPI waveOutClose(HWAVEOUT device) {
  if (SinkDevice* const sink = FindSink(device)) return CloseSink(sink);
  const MMRESULT result = CallWinmm(&Winmm::close, device);
  if (result == MMSYSERR_NOERROR) RemoveSystemDevice(device);
  return result;
}

MMRESULT WINAPI waveOutPrepareHeader(HWAVEOUT device, WAVEHDR* header, UINT bytes) {
  if (!FindSink(device)) return CallWinmm(&Winmm::prepare_header, device, header, bytes);
  if (!header || bytes < sizeof(WAVEHDR)) return MMSYSERR_INVALPARAM;
  header->dwFlags |= WHDR_PREPARED;
  return MMSYSERR_NOERROR;
}

MMRESULT WINAPI waveOutUnprepareHeader(HWAVEOUT device, WAVEHDR* header, UINT bytes) {
  if (!FindSink(device)) return CallWinmm(&Winmm::unprepare_header, device, header, bytes);
  if (!header || bytes < sizeof(WAVEHDR)) return MMSYSERR_INVALPARAM;
  if (header->dwFlags & WHDR_INQUEUE) return WAVERR_STILLPLAYING;
  header->dwFlags &= ~WHDR_PREPARED;
  return MMSYSERR_NOERROR;
}

MMRESULT WINAPI waveOutWrite(HWAVEOUT device, WAVEHDR* header, UINT bytes) {
  SinkDevice* const sink = FindSink(device);
  if (!sink) return CallWinmm(&Winmm::write, device, header, bytes);
  if (!header || bytes < sizeof(WAVEHDR)) return MMSYSERR_INVALPARAM;
  return sink->Write(header);
}

MMRESULT WINAPI waveOutPause(HWAVEOUT device) {
  SinkDevice* const sink = FindSink(device);
  return sink ? sink->Pause() : CallWinmm(&Winmm::pause, device);
}

MMRESULT WINAPI waveOutRestart(HWAVEOUT device) {
  SinkDevice* const sink = FindSink(device);
  return sink ? sink->Restart() : CallWinmm(&Winmm::restart, device);
}

MMRESULT WINAPI waveOutReset(HWAVEOUT device) {
  SinkDevice* const sink = FindSink(device);
  return sink ? sink->Reset() : CallWinmm(&Winmm::reset, device);
}

MMRESULT WINAPI waveOutGetPosition(HWAVEOUT device, MMTIME* time, UINT bytes) {
  SinkDevice* const sink = FindSink(device);
  if (!sink) return CallWinmm(&Winmm::get_position, device, time, bytes);
  if (!time || bytes < sizeof(MMTIME)) return MMSYSERR_INVALPARAM;
  return sink->GetPosition(time);
}

// Whatever device or number is named: the volume is one for all that this process plays.
MMRESULT WINAPI waveOutGetVolume(HWAVEOUT, DWORD* volume) {
  if (!volume) return MMSYSERR_INVALPARAM;
  *volume = GetVolume();
  return MMSYSERR_NOERROR;
}

MMRESULT WINAPI waveOutSetVolume(HWAVEOUT, DWORD volume) {
  SetVolume(volume);
  return MMSYSERR_NOERROR;
}

BOOL WINAPI SipShowIM(DWORD flag) {
  InterlockedExchange(&g_panel_shown, flag == 1);
  return TRUE;
}

// For tests: whether the panel is up.
BOOL WINAPI KelvoInputPanelState() {
  return g_panel_shown != 0;
}

}  // extern "C"
