#include "pocketpc/coredll/file_device.h"

#include <string.h>

#include "base/memory/heap.h"
#include "pocketpc/support/module_thread.h"

namespace kelvo {
namespace {

using Callback = void(CALLBACK*)(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);

int64_t ClockMicroseconds() noexcept {
  LARGE_INTEGER now, frequency;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&frequency);
  return now.QuadPart / frequency.QuadPart * 1000000 +
         now.QuadPart % frequency.QuadPart * 1000000 / frequency.QuadPart;
}

}  // namespace

FileDevice* FileDevice::Open(const wchar_t* path, const WAVEFORMATEX& format, Pace pace,
                             const WaveClient& client) noexcept {
  HeapPtr<FileDevice> device(HeapNew<FileDevice>(format, pace, client));
  if (!device) return nullptr;
  device->wake_.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  device->ended_.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  uint8_t header[16];
  memcpy(header, &format, sizeof(header));
  if (!device->wake_ || !device->ended_ || !device->file_.Create(path, header)) return nullptr;
  const auto run = [](void* context) { static_cast<FileDevice*>(context)->Run(); };
  if (!StartModuleThread(run, device.get())) return nullptr;
  device->Tell(WOM_OPEN, nullptr);
  return device.Release();
}

MMRESULT FileDevice::Close() noexcept {
  {
    LockGuard guard(lock_);
    if (!queue_.empty()) return WAVERR_STILLPLAYING;
    closing_ = true;
  }
  SetEvent(wake_.get());
  WaitForSingleObject(ended_.get(), INFINITE);
  Tell(WOM_CLOSE, nullptr);
  HeapDelete(this);
  return MMSYSERR_NOERROR;
}

MMRESULT FileDevice::Write(WAVEHDR* header) noexcept {
  LockGuard guard(lock_);
  if (!(header->dwFlags & WHDR_PREPARED)) return WAVERR_UNPREPARED;
  if (header->dwFlags & WHDR_INQUEUE) return WAVERR_STILLPLAYING;
  if (!queue_.Append(header)) return MMSYSERR_NOMEM;
  header->dwFlags = (header->dwFlags & ~WHDR_DONE) | WHDR_INQUEUE;
  if (queue_.size() == 1) first_start_ = ClockMicroseconds();
  SetEvent(wake_.get());
  return MMSYSERR_NOERROR;
}

MMRESULT FileDevice::Pause() noexcept {
  LockGuard guard(lock_);
  paused_ = true;
  return MMSYSERR_NOERROR;
}

// The interrupted block begins anew: nothing of it is in the file yet.
MMRESULT FileDevice::Restart() noexcept {
  LockGuard guard(lock_);
  paused_ = false;
  first_start_ = ClockMicroseconds();
  SetEvent(wake_.get());
  return MMSYSERR_NOERROR;
}

MMRESULT FileDevice::Reset() noexcept {
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
  for (WAVEHDR* header : dropped) Tell(WOM_DONE, header);
  return MMSYSERR_NOERROR;
}

MMRESULT FileDevice::GetPosition(MMTIME* time) noexcept {
  LockGuard guard(lock_);
  switch (time->wType) {
    case TIME_MS:
      time->u.ms = static_cast<DWORD>(played_bytes_ * 1000 / format_.nAvgBytesPerSec);
      break;
    case TIME_SAMPLES:
      time->u.sample = static_cast<DWORD>(played_bytes_ / format_.nBlockAlign);
      break;
    default:
      time->wType = TIME_BYTES;
      time->u.cb = static_cast<DWORD>(played_bytes_);
  }
  return MMSYSERR_NOERROR;
}

void FileDevice::Run() noexcept {
  for (;;) {
    DWORD wait_ms = INFINITE;
    WAVEHDR* done = nullptr;
    {
      LockGuard guard(lock_);
      if (closing_) break;
      if (!queue_.empty() && !paused_) {
        const int64_t remaining = RemainingMicroseconds();
        if (remaining <= 0) done = CompleteFirst();
        wait_ms = static_cast<DWORD>(remaining / 1000 + 1);
      }
    }
    if (done) {
      Tell(WOM_DONE, done);
    } else {
      WaitForSingleObject(wake_.get(), wait_ms);
    }
  }
  SetEvent(ended_.get());
}

int64_t FileDevice::RemainingMicroseconds() const noexcept {
  if (pace_ == Pace::kFast) return 0;
  return first_start_ + DurationMicroseconds(*queue_[0]) - ClockMicroseconds();
}

// The next header begins where this one ends, however late its end was noticed.
WAVEHDR* FileDevice::CompleteFirst() noexcept {
  WAVEHDR* const header = queue_[0];
  queue_.RemoveAt(0);
  first_start_ += DurationMicroseconds(*header);
  played_bytes_ += header->dwBufferLength;
  // A full disk does not stop the music.
  static_cast<void>(file_.Append(header->lpData, header->dwBufferLength));
  header->dwFlags = (header->dwFlags & ~WHDR_INQUEUE) | WHDR_DONE;
  return header;
}

int64_t FileDevice::DurationMicroseconds(const WAVEHDR& header) const noexcept {
  return static_cast<int64_t>(header.dwBufferLength) * 1000000 / format_.nAvgBytesPerSec;
}

void FileDevice::Tell(UINT message, WAVEHDR* header) noexcept {
  const auto device = reinterpret_cast<HWAVEOUT>(this);
  const auto parameter = reinterpret_cast<DWORD_PTR>(header);
  switch (client_.kind) {
    case CALLBACK_WINDOW:
      PostMessageW(reinterpret_cast<HWND>(client_.target), message,
                   reinterpret_cast<WPARAM>(device), static_cast<LPARAM>(parameter));
      break;
    case CALLBACK_THREAD:
      PostThreadMessageW(static_cast<DWORD>(client_.target), message,
                         reinterpret_cast<WPARAM>(device), static_cast<LPARAM>(parameter));
      break;
    case CALLBACK_FUNCTION:
      reinterpret_cast<Callback>(client_.target)(device, message, client_.context, parameter, 0);
      break;
    case CALLBACK_EVENT:
      SetEvent(reinterpret_cast<HANDLE>(client_.target));
      break;
    default:
      break;
  }
}

}  // namespace kelvo
