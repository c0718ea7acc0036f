#include "host/wav_file_output.h"

#include <string.h>

namespace velmora {

WavFileOutput::WavFileOutput(const std::wstring& path)
    : path_(path), may_run_(CreateEventW(nullptr, TRUE, TRUE, nullptr)) {}

WavFileOutput::~WavFileOutput() {
  Close();
  CloseHandle(may_run_);
}

int32_t WavFileOutput::Open(uint32_t, uint32_t buffer_bytes, uint32_t channels,
                            uint32_t sample_rate, uint32_t) noexcept {
  Close();
  file_ = CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                      FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file_ == INVALID_HANDLE_VALUE) return 0;
  channels_ = channels;
  sample_rate_ = sample_rate;
  data_bytes_ = 0;
  played_frames_ = 0;
  data_.assign(buffer_bytes, 0);
  buffer_.data = data_.data();
  SetEvent(may_run_);
  WriteHeader();
  return 1;
}

// The canonical 44 bytes: 16-bit PCM.
void WavFileOutput::WriteHeader() {
  const uint32_t frame_bytes = channels_ * 2;
  const uint32_t words[11] = {0x46464952,  // "RIFF"
                              36 + data_bytes_,
                              0x45564157,  // "WAVE"
                              0x20746D66,  // "fmt "
                              16,
                              1 | channels_ << 16,  // PCM
                              sample_rate_,
                              sample_rate_ * frame_bytes,
                              frame_bytes | 16u << 16,
                              0x61746164,  // "data"
                              data_bytes_};
  DWORD written;
  SetFilePointer(file_, 0, nullptr, FILE_BEGIN);
  WriteFile(file_, words, sizeof(words), &written, nullptr);
}

void WavFileOutput::Close() noexcept {
  if (file_ == INVALID_HANDLE_VALUE) return;
  WriteHeader();
  CloseHandle(file_);
  file_ = INVALID_HANDLE_VALUE;
}

kelvo::OutputBuffer* WavFileOutput::GetBuffer() noexcept {
  WaitForSingleObject(may_run_, INFINITE);
  return &buffer_;
}

int32_t WavFileOutput::Write(kelvo::OutputBuffer* buffer, uint32_t) noexcept {
  DWORD written = 0;
  WriteFile(file_, buffer->data, buffer->valid_bytes, &written, nullptr);
  data_bytes_ += written;
  InterlockedExchangeAdd(&played_frames_, static_cast<LONG>(written / (2 * channels_)));
  return written == buffer->valid_bytes;
}

void WavFileOutput::Pause(uint32_t pause) noexcept {
  if (pause) {
    ResetEvent(may_run_);
  } else {
    SetEvent(may_run_);
  }
}

void WavFileOutput::Reset() noexcept {
  InterlockedExchange(&played_frames_, 0);
  SetEvent(may_run_);
}

uint32_t WavFileOutput::PlayedSamples(kelvo::HostWord, kelvo::HostWord) noexcept {
  return static_cast<uint32_t>(played_frames_);
}

}  // namespace velmora
