#include "pocketpc/wmpcmn/player_engine.h"

#include "base/windows/player_control.h"
#include "pocketpc/support/module.h"

namespace kelvo {
namespace {

constexpr double kUnitsPerSecond = 10000000;
constexpr uint64_t kMillisecond = 10000;  // in the same units
constexpr double kMaxSeconds = 1e9;
constexpr DWORD kMaxGoodbyeMs = 2000;

}  // namespace

PlayerEngine* PlayerEngine::Create(EventSource* events) noexcept {
  HeapPtr<PlayerEngine> player(HeapNew<PlayerEngine>(events));
  if (!player) return nullptr;
  player->asked_.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  player->answered_.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  player->gone_.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!player->asked_ || !player->answered_ || !player->gone_ || !player->audio_.changed()) {
    return nullptr;
  }
  return player.Release();
}

void PlayerEngine::Quit() noexcept {
  if (GetCurrentThreadId() == thread_id_) {
    Execute({Verb::kQuit, nullptr, 0});
  } else if (started()) {
    {
      LockGuard guard(callers_);
      command_ = {Verb::kQuit, nullptr, 0};
      SetEvent(asked_.get());
    }
    // The process may end next, and the system's reader does not survive that half closed. But
    // inside a detach handler it never gets closed: it waits for threads of its own, which cannot
    // end before the handler has.
    WaitForSingleObject(gone_.get(), kMaxGoodbyeMs);
  }
  Drop();
}

HRESULT PlayerEngine::Halt() noexcept {
  return started() ? Run({Verb::kHalt, nullptr, 0}) : S_OK;
}

bool PlayerEngine::started() noexcept {
  LockGuard guard(callers_);
  return started_;
}

void PlayerEngine::Drop() noexcept {
  if (InterlockedDecrement(&owners_) == 0) HeapDelete(this);
}

HRESULT PlayerEngine::Open(const wchar_t* path) noexcept {
  return path && path[0] ? Run({Verb::kOpen, path, 0}) : E_INVALIDARG;
}

HRESULT PlayerEngine::Play() noexcept {
  return Run({Verb::kPlay, nullptr, 0});
}

HRESULT PlayerEngine::Stop() noexcept {
  return Run({Verb::kStop, nullptr, 0});
}

HRESULT PlayerEngine::Seek(double seconds) noexcept {
  if (!(seconds >= 0 && seconds <= kMaxSeconds)) return E_INVALIDARG;  // nor NaN
  return Run({Verb::kSeek, nullptr, static_cast<uint64_t>(seconds * kUnitsPerSecond + 0.5)});
}

HRESULT PlayerEngine::GetPosition(double* seconds) noexcept {
  LockGuard guard(shown_);
  *seconds = static_cast<double>(position_) / kUnitsPerSecond;
  return has_file_ ? S_OK : E_UNEXPECTED;
}

HRESULT PlayerEngine::GetDuration(double* seconds) noexcept {
  LockGuard guard(shown_);
  *seconds = static_cast<double>(duration_) / kUnitsPerSecond;
  return has_file_ ? S_OK : E_UNEXPECTED;
}

HRESULT PlayerEngine::Run(const Command& command) noexcept {
  if (GetCurrentThreadId() == thread_id_) return Execute(command);  // from an event
  LockGuard guard(callers_);
  if (!started_) {
    const auto loop = [](void* context) { static_cast<PlayerEngine*>(context)->Loop(); };
    InterlockedIncrement(&owners_);
    if (!StartModuleThread(loop, this)) {
      InterlockedDecrement(&owners_);
      return E_OUTOFMEMORY;
    }
    started_ = true;
  }
  command_ = command;
  SetEvent(asked_.get());
  WaitForSingleObject(answered_.get(), INFINITE);
  return result_;
}

void PlayerEngine::Loop() noexcept {
  thread_id_ = GetCurrentThreadId();
  const bool in_apartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
  const HANDLE signals[] = {asked_.get(), audio_.changed()};
  while (!quitting_) {
    if (WaitForMultipleObjects(2, signals, FALSE, INFINITE) == WAIT_OBJECT_0) {
      result_ = Execute(command_);
      SetEvent(answered_.get());
    }
    if (!playing_) decoder_.Close();
    DISPID event;
    if (playing_ && Pump(&event)) events_->Fire(event);
    if (change_pending_ && !quitting_) {
      change_pending_ = false;
      events_->Fire(kPlayerChangeEvent);
    }
  }
  audio_.Close();
  decoder_.Close();
  SetEvent(gone_.get());
  Drop();
  if (in_apartment) CoUninitialize();
}

HRESULT PlayerEngine::Execute(const Command& command) noexcept {
  switch (command.verb) {
    case Verb::kOpen:
      return DoOpen(command.path);
    case Verb::kPlay:
      return DoPlay();
    case Verb::kStop:
      DoStop();
      return S_OK;
    case Verb::kSeek:
      return DoSeek(command.time);
    case Verb::kHalt:
      Silence();
      return S_OK;
    case Verb::kQuit:
      Silence();
      quitting_ = true;
      return S_OK;
  }
  return E_UNEXPECTED;
}

HRESULT PlayerEngine::DoOpen(const wchar_t* path) noexcept {
  DoStop();
  audio_.Close();  // a recording ends with its file
  const HRESULT result = Examine(path);
  LockGuard guard(shown_);
  has_file_ = SUCCEEDED(result);
  position_ = 0;
  duration_ = has_file_ ? decoder_.duration() : 0;
  return result;
}

HRESULT PlayerEngine::Examine(const wchar_t* path) noexcept {
  const HRESULT result = decoder_.Open(path);
  decoder_.Close();
  if (FAILED(result)) return result;
  return path_.Assign(path) ? S_OK : E_OUTOFMEMORY;
}

HRESULT PlayerEngine::DoPlay() noexcept {
  if (!has_file_) return E_UNEXPECTED;
  if (playing_) return S_OK;
  HRESULT result = decoder_.Open(path_.get());
  if (SUCCEEDED(result) && position_ > 0) result = decoder_.Seek(position_);
  if (SUCCEEDED(result) && !audio_.Open(decoder_.rate())) {
    result = HRESULT_FROM_WIN32(ERROR_NO_SYSTEM_RESOURCES);
  }
  if (FAILED(result)) {
    decoder_.Close();
    return result;
  }
  input_ended_ = false;
  playing_ = true;
  change_pending_ = true;
  SetEvent(audio_.changed());  // there is room for blocks
  return S_OK;
}

void PlayerEngine::DoStop() noexcept {
  Silence();
  decoder_.Close();
}

void PlayerEngine::Silence() noexcept {
  if (playing_) change_pending_ = true;
  playing_ = false;
  audio_.Reset();
  left_at_ = position_;
  SetPosition(0);
}

HRESULT PlayerEngine::DoSeek(uint64_t time) noexcept {
  if (!has_file_) return E_UNEXPECTED;
  if (time > duration_) time = duration_;
  // Who pauses by stopping comes back with whole milliseconds: nothing is to be heard twice.
  if (!playing_ && time <= left_at_ && left_at_ - time < kMillisecond) time = left_at_;
  if (playing_) {
    audio_.Reset();
    input_ended_ = false;
    const HRESULT result = decoder_.Seek(time);
    if (FAILED(result)) {
      DoStop();
      return result;
    }
  }
  SetPosition(time);
  return S_OK;
}

bool PlayerEngine::Pump(DISPID* event) noexcept {
  while (const AudioQueue::Block* done = audio_.NextDone()) SetPosition(done->end_time);
  const HRESULT result = Refill();
  if (SUCCEEDED(result) && !(input_ended_ && audio_.empty())) return false;
  DoStop();
  audio_.Close();  // the device is others' until the next Play
  *event = SUCCEEDED(result) ? kPlayerEndEvent : kPlayerErrorEvent;
  return true;
}

HRESULT PlayerEngine::Refill() noexcept {
  while (!input_ended_) {
    AudioQueue::Block* const block = audio_.FreeBlock();
    if (!block) break;
    const HRESULT result = decoder_.Read(&block->samples, &block->end_time);
    if (FAILED(result)) return result;
    if (result == S_FALSE) {
      input_ended_ = true;
    } else if (!block->samples.empty() && !audio_.Play(block)) {
      return E_FAIL;
    }
  }
  return S_OK;
}

void PlayerEngine::SetPosition(uint64_t time) noexcept {
  LockGuard guard(shown_);
  position_ = time < duration_ ? time : duration_;
}

}  // namespace kelvo
