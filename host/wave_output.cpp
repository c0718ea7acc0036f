#include "host/wave_output.h"

#include <stddef.h>
#include <string.h>

namespace velmora {
namespace {

// What is left of a track when the next one may begin: longer than it takes to open a file and to
// decode its first buffer on a machine that is busy.
constexpr DWORD kAheadMs = 200;
constexpr DWORD kPollMs = 10;

}  // namespace

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
  Finish();
  CloseHandle(buffer_done_);
}

int32_t WaveOutput::Open(uint32_t buffer_count, uint32_t buffer_bytes, uint32_t channels,
                         uint32_t sample_rate, uint32_t bits_per_sample) noexcept {
  WAVEFORMATEX format = {};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = static_cast<WORD>(channels);
  format.nSamplesPerSec = sample_rate;
  format.wBitsPerSample = static_cast<WORD>(bits_per_sample);
  format.nBlockAlign = static_cast<WORD>(channels * bits_per_sample / 8);
  format.nAvgBytesPerSec = sample_rate * format.nBlockAlign;
  {
    Guard guard(lock_);
    failed_ = false;
    if (GoesOn(buffer_count, buffer_bytes, format)) {
      if (paused_) waveOutRestart(device_);
      paused_ = false;
      ended_ = false;
      open_ = true;
      start_ = written_;
      return 1;
    }
  }
  Close();
  Finish();
  Guard guard(lock_);
  if (waveOutOpen(&device_, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(buffer_done_), 0,
                  CALLBACK_EVENT) != MMSYSERR_NOERROR) {
    device_ = nullptr;
    return 0;
  }
  format_ = format;
  open_ = true;
  ended_ = false;
  paused_ = false;
  written_ = start_ = 0;
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

bool WaveOutput::GoesOn(uint32_t buffer_count, uint32_t buffer_bytes,
                        const WAVEFORMATEX& format) const {
  return device_ && !open_ && slots_.size() == buffer_count &&
         slots_[0].data.size() == buffer_bytes && memcmp(&format_, &format, sizeof format) == 0;
}

// After a track's end, the next one may go on with the device.
void WaveOutput::Close() noexcept {
  Guard guard(lock_);
  open_ = false;
  if (!ended_) ReleaseDevice();
}

void WaveOutput::ReleaseDevice() {
  if (!device_) return;
  waveOutReset(device_);
  for (Slot& slot : slots_) waveOutUnprepareHeader(device_, &slot.header, sizeof(slot.header));
  waveOutClose(device_);
  device_ = nullptr;
  slots_.clear();
}

void WaveOutput::Silence() {
  Guard guard(lock_);
  if (!open_) ReleaseDevice();
}

void WaveOutput::Finish() {
  for (DWORD waited = 0; waited < 2 * kAheadMs; waited += kPollMs) {
    {
      Guard guard(lock_);
      if (!device_ || AllDone()) break;
    }
    WaitForSingleObject(buffer_done_, kPollMs);
  }
  Silence();
}

bool WaveOutput::AllDone() const {
  for (const Slot& slot : slots_) {
    if (slot.use == Use::kQueued && (slot.header.dwFlags & WHDR_DONE) == 0) return false;
  }
  return true;
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
    if (slot.use == Use::kQueued) written_ += slot.header.dwBufferLength / format_.nBlockAlign;
    ended_ = false;
    failed_ = failed_ || result != MMSYSERR_NOERROR;
    return result == MMSYSERR_NOERROR;
  }
  return 0;
}

void WaveOutput::Pause(uint32_t pause) noexcept {
  Guard guard(lock_);
  if (!device_ || !open_) return;
  paused_ = pause != 0;
  if (pause) {
    waveOutPause(device_);
  } else {
    waveOutRestart(device_);
  }
}

void WaveOutput::Reset() noexcept {
  Guard guard(lock_);
  if (!device_ || !open_) return;
  waveOutReset(device_);
  written_ = start_ = 0;
  ended_ = false;
  if (paused_) waveOutPause(device_);  // a reset may have ended the device's pause
  for (Slot& slot : slots_) {
    if (slot.use == Use::kQueued) slot.use = Use::kFree;
  }
  SetEvent(buffer_done_);
}

uint32_t WaveOutput::Played() const {
  MMTIME time = {};
  time.wType = TIME_SAMPLES;
  if (!device_ || waveOutGetPosition(device_, &time, sizeof(time)) != MMSYSERR_NOERROR) return 0;
  return time.wType == TIME_SAMPLES ? time.u.sample : 0;
}

uint32_t WaveOutput::PlayedSamples(kelvo::HostWord, kelvo::HostWord) noexcept {
  Guard guard(lock_);
  if (!open_) return 0;
  const int32_t played = static_cast<int32_t>(Played() - start_);
  return played > 0 ? static_cast<uint32_t>(played) : 0;  // the track before is still heard
}

bool WaveOutput::failed() {
  Guard guard(lock_);
  return failed_;
}

int32_t WaveOutput::Drained() noexcept {
  Guard guard(lock_);
  const uint32_t ahead = format_.nSamplesPerSec / 1000 * kAheadMs;
  ended_ = AllDone() || (!paused_ && written_ - Played() <= ahead);
  return ended_;
}

}  // namespace velmora
