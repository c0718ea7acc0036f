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
class WaveOutput final : public kelvo::AudioOutput {
 public:
  WaveOutput();
  ~WaveOutput();

  static bool HasDevice() { return waveOutGetNumDevs() > 0; }
  // Whether the device refused a buffer since it was opened: something is not heard, or not in the
  // file that takes the device's place.
  bool failed();

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

  Slot* FindFree();  // the lock is held

  CriticalSection lock_;  // guards all but the event
  HANDLE buffer_done_;    // signalled by the device and by Reset
  HWAVEOUT device_ = nullptr;
  bool paused_ = false;
  bool failed_ = false;
  std::vector<Slot> slots_;
};

}  // namespace velmora
