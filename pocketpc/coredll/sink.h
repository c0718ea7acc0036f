#pragma once

#include <windows.h>

#include <mmsystem.h>

#include "pocketpc/coredll/sink_device.h"

namespace kelvo {

// A WAV file or nothing instead of the sound system, as the environment asks for it:
//   KELVO_AUDIO_SINK=silence   what is played is gone
//   KELVO_AUDIO_SINK=FILE.wav  the first device that a process opens plays into FILE.wav, the
//                              second into FILE-2.wav, and so on while the variable stays
//   KELVO_AUDIO_PACE=fast      blocks are over at once instead of in real time
// Read anew by each opening.
bool SinkWanted() noexcept;

// waveOutOpen for the sink; `flags` are waveOutOpen's. Of the ways to be called back it has
// CALLBACK_EVENT alone.
MMRESULT OpenSink(HWAVEOUT* device, const WAVEFORMATEX* format, DWORD_PTR callback,
                  DWORD flags) noexcept;

// The open sink device behind a handle, or null when the handle is the sound system's.
SinkDevice* FindSink(HWAVEOUT handle) noexcept;

MMRESULT CloseSink(SinkDevice* device) noexcept;

}  // namespace kelvo
