#pragma once

#include <windows.h>

#include <mmsystem.h>
#include <stdint.h>

#include "base/memory/array.h"
#include "base/sync/lock.h"
#include "base/windows/unique_handle.h"
#include "pocketpc/coredll/wav_file.h"

namespace kelvo {

enum class Pace { kRealTime, kFast };

// Whom a device tells about its blocks, as waveOutOpen's arguments say it.
struct WaveClient {
  DWORD kind;  // CALLBACK_NULL, _WINDOW, _THREAD, _FUNCTION or _EVENT
  DWORD_PTR target;
  DWORD_PTR context;
};

// A sound device that plays into a WAV file: takes headers in order, completes each when its time
// is over (or at once), and only then are its samples in the file. So what a reset drops is not
// there, as nobody would have heard it. Operations have the results of the waveOut function of
// their name; they may come from several threads, but none after Close.
class FileDevice {
 public:
  // `format` is PCM with non-zero rate and alignment. Null when the file or the thread cannot be
  // made.
  static FileDevice* Open(const wchar_t* path, const WAVEFORMATEX& format, Pace pace,
                          const WaveClient& client) noexcept;
  // Destroys the device on success. Not to be called from the device's own callback.
  MMRESULT Close() noexcept;

  MMRESULT Write(WAVEHDR* header) noexcept;
  MMRESULT Pause() noexcept;
  MMRESULT Restart() noexcept;
  MMRESULT Reset() noexcept;
  MMRESULT GetPosition(MMTIME* time) noexcept;

 private:
  template <class T>
  friend void HeapDelete(T* object) noexcept;
  template <class T, class... Args>
  friend T* HeapNew(Args&&... args) noexcept;

  FileDevice(const WAVEFORMATEX& format, Pace pace, const WaveClient& client) noexcept
      : format_(format), pace_(pace), client_(client) {}
  ~FileDevice() = default;

  void Run() noexcept;
  // Microseconds until the first header is over; below 0 when it is. Lock held.
  int64_t RemainingMicroseconds() const noexcept;
  WAVEHDR* CompleteFirst() noexcept;  // lock held
  int64_t DurationMicroseconds(const WAVEHDR& header) const noexcept;
  void Tell(UINT message, WAVEHDR* header) noexcept;

  const WAVEFORMATEX format_;
  const Pace pace_;
  const WaveClient client_;
  UniqueObject wake_;   // something changed for the device's thread
  UniqueObject ended_;  // the device's thread is through with this object

  Lock lock_;  // guards the rest
  WavFile file_;
  Array<WAVEHDR*> queue_;    // borrowed from the client, first to play first
  int64_t first_start_ = 0;  // microseconds of the clock, when the first header began
  uint64_t played_bytes_ = 0;
  bool paused_ = false;
  bool closing_ = false;
};

}  // namespace kelvo
