#pragma once

#include <kelvo/audio_output.h>
#include <windows.h>

#include <string>
#include <vector>

namespace velmora {

// Writes what is played into a WAV file, as fast as it comes. Each Open begins the file anew.
class WavFileOutput final : public kelvo::AudioOutput {
 public:
  explicit WavFileOutput(const std::wstring& path);
  ~WavFileOutput();

  int32_t Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
               uint32_t sample_rate, uint32_t bits_per_sample) noexcept override;
  void Close() noexcept override;
  kelvo::OutputBuffer* GetBuffer() noexcept override;
  int32_t Write(kelvo::OutputBuffer* buffer, uint32_t unused_bytes) noexcept override;
  void Pause(uint32_t pause) noexcept override;
  void Reset() noexcept override;
  uint32_t PlayedSamples(kelvo::HostWord a, kelvo::HostWord b) noexcept override;
  int32_t Drained() noexcept override { return 1; }  // nothing is ever queued

 private:
  void WriteHeader();

  std::wstring path_;
  HANDLE file_ = INVALID_HANDLE_VALUE;
  HANDLE may_run_;  // signalled unless paused
  uint32_t channels_ = 0;
  uint32_t sample_rate_ = 0;
  uint32_t data_bytes_ = 0;
  volatile LONG played_frames_ = 0;
  kelvo::OutputBuffer buffer_ = {};  // one is enough: it is written before the next is asked for
  std::vector<char> data_;
};

}  // namespace velmora
