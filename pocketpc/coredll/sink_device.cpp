#include "pocketpc/coredll/sink_device.h"

#include <string.h>

#include "base/memory/heap.h"
#include "pocketpc/coredll/volume.h"
#include "pocketpc/support/module.h"

namespace kelvo {
namespace {

int64_t ClockMicroseconds() noexcept {
  LARGE_INTEGER now, frequency;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&frequency);
  return now.QuadPart / frequency.QuadPart * 1000000 +
         now.QuadPart % frequency.QuadPart * 1000000 / frequency.QuadPart;
}

}  // namespace

SinkDevice* SinkDevice::Open(const wchar_t* path, const WAVEFORMATEX& format, Pace pace,
                             HANDLE event) noexcept {
  HeapPtr<SinkDevice> device(HeapNew<SinkDevice>(format, pace, event));
  if (!device) return nullptr;
  device->wake_.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  device->ended_.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  uint8_t header[16];
  memcpy(header, &format, sizeof(header));
  device->has_file_ = path != nullptr;
  if (!device->wake_ || !device->ended_) return nullptr;
  if (path && !device->file_.Create(path, header)) return nullptr;
  const auto run = [](void* context) { static_cast<SinkDevice*>(context)->Run(); };
  if (!StartModuleThread(run, device.get())) return nullptr;
  return device.Release();
}

MMRESULT SinkDevice::Close() noexcept {
  {
    LockGuard guard(lock_);
    if (!queue_.empty()) return WAVERR_STILLPLAYING;
    closing_ = true;
  }
  SetEvent(wake_.get());
  WaitForSingleObject(ended_.get(), INFINITE);
  return MMSYSERR_NOERROR;
}

MMRESULT SinkDevice::Write(WAVEHDR* header) noexcept {
  LockGuard guard(lock_);
  if (!(header->dwFlags & WHDR_PREPARED)) return WAVERR_UNPREPARED;
  if (header->dwFlags & WHDR_INQUEUE) return WAVERR_STILLPLAYING;
  if (failed_) return MMSYSERR_ERROR;
  if (!queue_.Append(header)) return MMSYSERR_NOMEM;
  header->dwFlags = (header->dwFlags & ~WHDR_DONE) | WHDR_INQUEUE;
  if (queue_.size() == 1) {
    first_start_ = ClockMicroseconds();
    paused_after_ = 0;
  }
  SetEvent(wake_.get());
  return MMSYSERR_NOERROR;
}

MMRESULT SinkDevice::Pause() noexcept {
  LockGuard guard(lock_);
  if (!paused_) paused_after_ = PlayedMicroseconds();
  paused_ = true;
  return MMSYSERR_NOERROR;
}

MMRESULT SinkDevice::Restart() noexcept {
  LockGuard guard(lock_);
  if (paused_) first_start_ = ClockMicroseconds() - paused_after_;
  paused_ = false;
  SetEvent(wake_.get());
  return MMSYSERR_NOERROR;
}

MMRESULT SinkDevice::Reset() noexcept {
  Array<WAVEHDR*> dropped;
  {
    LockGuard guard(lock_);
    dropped.Swap(queue_);
    played_bytes_ = 0;
    paused_ = false;
    for (WAVEHDR* header : dropped) {
      header->dwFlags = (header->dwFlags & ~WHDR_INQUEUE) | WHDR_DONE;
    }
  }
  if (!dropped.empty() && event_) SetEvent(event_);
  return MMSYSERR_NOERROR;
}

MMRESULT SinkDevice::GetPosition(MMTIME* time) noexcept {
  LockGuard guard(lock_);
  const uint64_t bytes = PlayedBytes();
  switch (time->wType) {
    case TIME_MS:
      time->u.ms = static_cast<DWORD>(bytes * 1000 / format_.nAvgBytesPerSec);
      break;
    case TIME_SAMPLES:
      time->u.sample = static_cast<DWORD>(bytes / format_.nBlockAlign);
      break;
    default:
      time->wType = TIME_BYTES;
      time->u.cb = static_cast<DWORD>(bytes);
  }
  return MMSYSERR_NOERROR;
}

void SinkDevice::Run() noexcept {
  for (;;) {
    DWORD wait_ms = INFINITE;
    bool done = false;
    {
      LockGuard guard(lock_);
      if (closing_) break;
      if (!queue_.empty() && !paused_) {
        const int64_t remaining = RemainingMicroseconds();
        done = remaining <= 0;
        if (done) CompleteFirst();
        wait_ms = static_cast<DWORD>(remaining / 1000 + 1);
      }
    }
    if (done) {
      if (event_) SetEvent(event_);
    } else {
      WaitForSingleObject(wake_.get(), wait_ms);
    }
  }
  SetEvent(ended_.get());
}

int64_t SinkDevice::PlayedMicroseconds() const noexcept {
  if (queue_.empty() || pace_ == Pace::kFast) return 0;
  return paused_ ? paused_after_ : ClockMicroseconds() - first_start_;
}

int64_t SinkDevice::RemainingMicroseconds() const noexcept {
  if (pace_ == Pace::kFast) return 0;
  return DurationMicroseconds(*queue_[0]) - PlayedMicroseconds();
}

uint64_t SinkDevice::PlayedBytes() const noexcept {
  if (queue_.empty()) return played_bytes_;
  const uint64_t bytes =
      static_cast<uint64_t>(PlayedMicroseconds()) * format_.nAvgBytesPerSec / 1000000;
  const uint64_t limit = queue_[0]->dwBufferLength;
  return played_bytes_ + (bytes < limit ? bytes : limit);
}

// The next header begins where this one ends, however late its end was noticed.
void SinkDevice::CompleteFirst() noexcept {
  WAVEHDR* const header = queue_[0];
  queue_.RemoveAt(0);
  first_start_ += DurationMicroseconds(*header);
  played_bytes_ += header->dwBufferLength;
  if (has_file_ && !Record(*header)) failed_ = true;
  header->dwFlags = (header->dwFlags & ~WHDR_INQUEUE) | WHDR_DONE;
}

// As loud as it would be heard; untouched at full volume.
bool SinkDevice::Record(const WAVEHDR& header) noexcept {
  const DWORD volume = GetVolume();
  if (volume == kFullVolume || format_.wBitsPerSample != 16) {
    return file_.Append(header.lpData, header.dwBufferLength);
  }
  constexpr uint32_t kBlockSamples = 2048;
  int16_t block[kBlockSamples];
  const auto* samples = reinterpret_cast<const int16_t*>(header.lpData);
  for (uint32_t left = header.dwBufferLength / 2; left > 0;) {
    const uint32_t count = left < kBlockSamples ? left : kBlockSamples;
    for (uint32_t i = 0; i < count; ++i) {
      block[i] = AtVolume(samples[i], volume, format_.nChannels == 2 && i % 2 == 1);
    }
    if (!file_.Append(block, count * 2)) return false;
    samples += count;
    left -= count;
  }
  return true;
}

int64_t SinkDevice::DurationMicroseconds(const WAVEHDR& header) const noexcept {
  return static_cast<int64_t>(header.dwBufferLength) * 1000000 / format_.nAvgBytesPerSec;
}

}  // namespace kelvo
