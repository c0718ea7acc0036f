#include "host/wave_output.h"

#include <stddef.h>

namespace velmora {

// The plug-in sees a wave header's first fields.
static_assert(sizeof(WAVEHDR) == sizeof(kelvo::OutputBuffer));
static_assert(offsetof(WAVEHDR, dwBytesRecorded) == offsetof(kelvo::OutputBuffer, valid_bytes));

void SendSoundToFile(const std::wstring& wav_path) {
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", wav_path.c_str());
  SetEnvironmentVariableW(L"KELVO_AUDIO_PACE", L"fast");
}

void SendSoundNowhere() {
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", L"silence");
}

WaveOutput::WaveOutput() : buffer_done_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

WaveOutput::~WaveOutput() {
  Close();
  CloseHandle(buffer_done_);
}

int32_t WaveOutput::Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
                         uint32_t sample_rate, uint32_t bits_per_sample) noexcept {
  Close();
  Guard guard(lock_);
  WAVEFORMATEX format = {};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = static_cast<WORD>(channels);
  format.nSamplesPerSec = sample_rate;
  format.wBitsPerSample = static_cast<WORD>(bits_per_sample);
  format.nBlockAlign = static_cast<WORD>(channels * bits_per_sample / 8);
  format.nAvgBytesPerSec = sample_rate * format.nBlockAlign;
  if (waveOutOpen(&device_, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(buffer_done_), 0,
                  CALLBACK_EVENT) != MMSYSERR_NOERROR) {
    device_ = nullptr;
    return 0;
  }
  paused_ = false;
  failed_ = false;
  slots_.resize(buffer_count);
  for (Slot& slot : slots_) {
    slot.data.resize(buffer_bytes);
    slot.use = Use::kFree;
    slot.header = {};
    slot.header.lpData = slot.data.data();
    slot.header.dwBufferLength = buffer_bytes;
    waveOutPrepareHeader(device_, &slot.header, sizeof(slot.header));
  }
  return 1;
}

void WaveOutput::Close() noexcept {
  Guard guard(lock_);
  if (!device_) return;
  waveOutReset(device_);
  for (Slot& slot : slots_) waveOutUnprepareHeader(device_, &slot.header, sizeof(slot.header));
  waveOutClose(device_);
  device_ = nullptr;
  slots_.clear();
}

WaveOutput::Slot* WaveOutput::FindFree() {
  for (Slot& slot : slots_) {
    if (slot.use == Use::kQueued && (slot.header.dwFlags & WHDR_DONE) != 0) slot.use = Use::kFree;
    if (slot.use == Use::kFree) return &slot;
  }
  return nullptr;
}

kelvo::OutputBuffer* WaveOutput::GetBuffer() noexcept {
  for (;;) {
    {
      Guard guard(lock_);
      if (Slot* slot = FindFree()) {
        slot->use = Use::kHandedOut;
        return reinterpret_cast<kelvo::OutputBuffer*>(&slot->header);
      }
    }
    WaitForSingleObject(buffer_done_, INFINITE);
  }
}

int32_t WaveOutput::Write(kelvo::OutputBuffer* buffer, uint32_t) noexcept {
  Guard guard(lock_);
  for (Slot& slot : slots_) {
    if (reinterpret_cast<kelvo::OutputBuffer*>(&slot.header) != buffer) continue;
    slot.header.dwFlags &= ~static_cast<DWORD>(WHDR_DONE);
    const MMRESULT result = waveOutWrite(device_, &slot.header, sizeof(slot.header));
    slot.use = result == MMSYSERR_NOERROR ? Use::kQueued : Use::kFree;
    failed_ = failed_ || result != MMSYSERR_NOERROR;
    return result == MMSYSERR_NOERROR;
  }
  return 0;
}

void WaveOutput::Pause(uint32_t pause) noexcept {
  Guard guard(lock_);
  paused_ = pause != 0;
  if (!device_) return;
  if (pause) {
    waveOutPause(device_);
  } else {
    waveOutRestart(device_);
  }
}

void WaveOutput::Reset() noexcept {
  Guard guard(lock_);
  if (!device_) return;
  waveOutReset(device_);
  if (paused_) waveOutPause(device_);  // a reset may have ended the device's pause
  for (Slot& slot : slots_) {
    if (slot.use == Use::kQueued) slot.use = Use::kFree;
  }
  SetEvent(buffer_done_);
}

uint32_t WaveOutput::PlayedSamples(kelvo::HostWord, kelvo::HostWord) noexcept {
  Guard guard(lock_);
  MMTIME time = {};
  time.wType = TIME_SAMPLES;
  if (!device_ || waveOutGetPosition(device_, &time, sizeof(time)) != MMSYSERR_NOERROR) return 0;
  return time.wType == TIME_SAMPLES ? time.u.sample : 0;
}

bool WaveOutput::failed() {
  Guard guard(lock_);
  return failed_;
}

int32_t WaveOutput::Drained() noexcept {
  Guard guard(lock_);
  for (const Slot& slot : slots_) {
    if (slot.use == Use::kQueued && (slot.header.dwFlags & WHDR_DONE) == 0) return 0;
  }
  return 1;
}

}  // namespace velmora
