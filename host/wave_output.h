#pragma once

#include <kelvo/audio_output.h>
#include <windows.h>

#include <mmsystem.h>

#include <string>
#include <vector>

#include "host/system.h"

namespace velmora {

// Where sound goes instead of the sound device: read by the desktop's stand-in for the device's
// sound functions at each opening, so it holds for plug-ins with an output of their own too.
void SendSoundToFile(const std::wstring& wav_path);  // as fast as it comes
void SendSoundNowhere();                             // not heard, but it takes its time

// Plays on the system's sound device. The decoding thread asks for buffers, fills and queues them;
// the host's thread pauses and resets meanwhile.
//
// One track follows the other without a gap: what is left of a track counts as drained a little
// before it has been heard, and behind an output that is closed then the device plays on. The next
// track's sound is queued behind it when it has the same format, and waits for its end otherwise.
class WaveOutput final : public kelvo::AudioOutput {
 public:
  WaveOutput();
  ~WaveOutput();

  static bool HasDevice() { return waveOutGetNumDevs() > 0; }
  // Whether the device refused a buffer since it was opened: something is not heard, or not in the
  // file that takes the device's place.
  bool failed();
  // For the host's thread, while the output is closed. The device is released: at once, or when
  // what still waits has been heard, which takes a moment. Destroying does the latter.
  void Silence();
  void Finish();

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override;
  void Close() noexcept override;
  kelvo::OutputBuffer* GetBuffer() noexcept override;
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept override;
  void Pause(uint32_t pause) noexcept override;
  void Reset() noexcept override;
  uint32_t PlayedSamples(kelvo::HostWord a, kelvo::HostWord b) noexcept override;
  int32_t Drained() noexcept override;

 private:
  enum class Use { kFree, kHandedOut, kQueued };
  struct Slot {
    WAVEHDR header;
    std::vector<char> data;
    Use use;
  };

  // The lock is held.
  Slot* FindFree();
  bool AllDone() const;
  uint32_t Played() const;  // frames, by the device
  bool GoesOn(uint32_t buffer_count, uint32_t buffer_bytes, const WAVEFORMATEX& format) const;
  void ReleaseDevice();

  CriticalSection lock_;  // guards all but the event
  HANDLE buffer_done_;    // signalled by the device and by Reset
  HWAVEOUT device_ = nullptr;
  WAVEFORMATEX format_ = {};  // of the device
  bool open_ = false;         // for a plug-in; the device may outlast it
  bool ended_ = false;        // the track has been reported as drained
  uint32_t written_ = 0;      // frames since the device was opened or reset
  uint32_t start_ = 0;        // of them, those before this track
  bool paused_ = false;
  bool failed_ = false;
  std::vector<Slot> slots_;
};

}  // namespace velmora
