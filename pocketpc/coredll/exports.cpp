// The exported waveOut functions: each goes to the sink device behind its handle or to the sound
// system.
#define _WINMM_  // we define what the header would import
#include <windows.h>

#include <mmsystem.h>

#include "pocketpc/coredll/sink.h"
#include "pocketpc/coredll/winmm.h"

using namespace kelvo;

extern "C" {

UINT WINAPI waveOutGetNumDevs() {
  if (SinkWanted()) return 1;
  const Winmm& winmm = LoadWinmm();
  return winmm.get_num_devs ? winmm.get_num_devs() : 0;
}

MMRESULT WINAPI waveOutOpen(HWAVEOUT* device, UINT id, const WAVEFORMATEX* format,
                            DWORD_PTR callback, DWORD_PTR context, DWORD flags) {
  if (!SinkWanted()) {
    return CallWinmm(&Winmm::open, device, id, format, callback, context, flags);
  }
  return OpenSink(device, format, {flags & CALLBACK_TYPEMASK, callback, context}, flags);
}

MMRESULT WINAPI waveOutClose(HWAVEOUT device) {
  FileDevice* const sink = FindSink(device);
  return sink ? CloseSink(sink) : CallWinmm(&Winmm::close, device);
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
  FileDevice* const sink = FindSink(device);
  if (!sink) return CallWinmm(&Winmm::write, device, header, bytes);
  if (!header || bytes < sizeof(WAVEHDR)) return MMSYSERR_INVALPARAM;
  return sink->Write(header);
}

MMRESULT WINAPI waveOutPause(HWAVEOUT device) {
  FileDevice* const sink = FindSink(device);
  return sink ? sink->Pause() : CallWinmm(&Winmm::pause, device);
}

MMRESULT WINAPI waveOutRestart(HWAVEOUT device) {
  FileDevice* const sink = FindSink(device);
  return sink ? sink->Restart() : CallWinmm(&Winmm::restart, device);
}

MMRESULT WINAPI waveOutReset(HWAVEOUT device) {
  FileDevice* const sink = FindSink(device);
  return sink ? sink->Reset() : CallWinmm(&Winmm::reset, device);
}

MMRESULT WINAPI waveOutGetPosition(HWAVEOUT device, MMTIME* time, UINT bytes) {
  FileDevice* const sink = FindSink(device);
  if (!sink) return CallWinmm(&Winmm::get_position, device, time, bytes);
  if (!time || bytes < sizeof(MMTIME)) return MMSYSERR_INVALPARAM;
  return sink->GetPosition(time);
}

// A file has no volume.
MMRESULT WINAPI waveOutGetVolume(HWAVEOUT device, DWORD* volume) {
  if (!FindSink(device)) return CallWinmm(&Winmm::get_volume, device, volume);
  return MMSYSERR_NOTSUPPORTED;
}

MMRESULT WINAPI waveOutSetVolume(HWAVEOUT device, DWORD volume) {
  if (!FindSink(device)) return CallWinmm(&Winmm::set_volume, device, volume);
  return MMSYSERR_NOTSUPPORTED;
}

}  // extern "C"
