#include "base/sync/thread.h"

#include <windows.h>

#include "base/memory/heap.h"
#include "base/windows/platform.h"
#include "base/windows/unique_handle.h"

namespace kelvo {
namespace {

struct StartRecord {
  Thread::Body body;
  void* context;
};

DWORD WINAPI Enter(void* parameter) noexcept {
  StartRecord* record = static_cast<StartRecord*>(parameter);
  const StartRecord start = *record;
  HeapDelete(record);
  start.body(start.context);
  return 0;
}

}  // namespace

void SleepMs(uint32_t milliseconds) noexcept {
  Sleep(milliseconds);
}

Event::Event() noexcept : event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
Event::~Event() {
  Close();
}
void Event::Set() noexcept {
  SetEvent(event_);
}
void Event::Reset() noexcept {
  ResetEvent(event_);
}
void Event::Close() noexcept {
  UniqueObject(std::exchange(event_, nullptr));
}

bool Thread::Start(Body body, void* context, int32_t priority) noexcept {
  StartRecord* record = HeapNew<StartRecord>(StartRecord{body, context});
  if (!record) return false;
  DWORD id;
  HANDLE thread = CreateThread(nullptr, 0, Enter, record, 0, &id);
  if (!thread) {
    HeapDelete(record);
    return false;
  }
  handle_ = thread;
  SetThreadPriority(thread, PlatformPriority(priority));
  return true;
}

bool Thread::ended() const noexcept {
  return held() && WaitForSingleObject(handle_, 0) == WAIT_OBJECT_0;
}

void Thread::Join() noexcept {
  if (!held()) {
    handle_ = nullptr;
    return;
  }
  WaitForSingleObject(handle_, INFINITE);
  UniqueObject(std::exchange(handle_, nullptr));
}

bool Thread::WaitForEventOrEnd(Event& event) noexcept {
  HANDLE handles[2] = {event.event_, handle_};
  if (!event.event_) {
    WaitForSingleObject(handle_, INFINITE);
    return false;
  }
  return WaitForMultipleObjects(2, handles, FALSE, INFINITE) == WAIT_OBJECT_0;
}

bool ThreadSlot::Attach() noexcept {
  if (users_++ == 0) {
    index_ = TlsAlloc();
    taken_ = index_ != 0xFFFFFFFFul;
  }
  return taken_;
}

void ThreadSlot::Detach() noexcept {
  if (--users_ > 0 || !taken_) return;
  TlsFree(index_);
  taken_ = false;
}

void* ThreadSlot::Get() const noexcept {
  return taken_ ? TlsGetValue(index_) : nullptr;
}

bool ThreadSlot::Set(void* value) noexcept {
  return taken_ && TlsSetValue(index_, value);
}

void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept {
  if (window) PostMessageW(static_cast<HWND>(window), message, wparam, lparam);
}

}  // namespace kelvo
