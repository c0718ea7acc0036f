#pragma once

#include <windows.h>

#include <mmsystem.h>
#include <stdint.h>

#include "base/memory/array.h"
#include "base/sync/lock.h"
#include "base/windows/unique_handle.h"

namespace kelvo {

// A RIFF WAVE file whose lengths are right after every block, so that it is whole whenever the
// process ends.
class WavFile {
 public:
  // Replaces an existing file. `format` is the 16 bytes of a PCM format.
  [[nodiscard]] bool Create(const wchar_t* path, const uint8_t (&format)[16]) noexcept;
  // False when the disk or the format's 4 GB are full; the file then ends with an earlier block.
  [[nodiscard]] bool Append(const void* data, uint32_t bytes) noexcept;

 private:
  bool WriteAt(uint32_t offset, const void* data, uint32_t bytes) noexcept;

  UniqueFile file_;
  uint32_t data_bytes_ = 0;
};

enum class Pace { kRealTime, kFast };

// A sound device that plays into a WAV file, or nowhere: takes headers in order, completes each
// when its time is over (or at once), and only then are its samples in the file. So what a reset
// drops is not there, as nobody would have heard it. When the file cannot be written, later headers
// are refused. Operations have the results of the waveOut function of their name; they may come
// from several threads, but none after Close.
class SinkDevice {
 public:
  // `format` is PCM with non-zero rate and alignment. `event` (null for none) is set after each
  // header. Null when the file or the thread cannot be made. A null path is nowhere.
  static SinkDevice* Open(const wchar_t* path, const WAVEFORMATEX& format, Pace pace,
                          HANDLE event) noexcept;
  // Once it has succeeded, the device is only to be destroyed.
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

  SinkDevice(const WAVEFORMATEX& format, Pace pace, HANDLE event) noexcept
      : format_(format), pace_(pace), event_(event) {}
  ~SinkDevice() = default;

  void Run() noexcept;
  // How much of the first header has been played, and what is left of it; below 0 when it is over.
  // Lock held.
  int64_t PlayedMicroseconds() const noexcept;
  int64_t RemainingMicroseconds() const noexcept;
  uint64_t PlayedBytes() const noexcept;  // lock held
  void CompleteFirst() noexcept;          // lock held
  bool Record(const WAVEHDR& header) noexcept;
  int64_t DurationMicroseconds(const WAVEHDR& header) const noexcept;

  const WAVEFORMATEX format_;
  const Pace pace_;
  const HANDLE event_;
  UniqueObject wake_;   // something changed for the device's thread
  UniqueObject ended_;  // the device's thread is through with this object

  Lock lock_;  // guards the rest
  bool has_file_ = false;
  bool failed_ = false;  // the file
  WavFile file_;
  Array<WAVEHDR*> queue_;     // borrowed from the client, first to play first
  int64_t first_start_ = 0;   // microseconds of the clock, when the first header began
  int64_t paused_after_ = 0;  // what was played of it when the pause began
  uint64_t played_bytes_ = 0;
  bool paused_ = false;
  bool closing_ = false;
};

}  // namespace kelvo
