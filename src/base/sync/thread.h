// Threads, events, waiting, a pointer per thread, and messages to the interface's. Two
// implementations: base/windows/thread.cpp, base/native/thread.cpp.
#pragma once

#include <stdint.h>

#include <utility>

namespace kelvo {

void SleepMs(uint32_t milliseconds) noexcept;

// Manual-reset; not signalled at first. An event that could not be created is never signalled.
class Event {
 public:
  Event() noexcept;
  ~Event();
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  bool valid() const noexcept { return event_ != nullptr; }
  void Set() noexcept;
  void Reset() noexcept;
  // Gives the event back early; it is dead then.
  void Close() noexcept;

 private:
  friend class Thread;
  void* event_ = nullptr;
};

// Priorities, with the device's numbers (smaller is more urgent).
constexpr int32_t kPriorityNormal = 3;

// At most one running thread at a time.
class Thread {
 public:
  using Body = void (*)(void* context);

  Thread() noexcept = default;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;
  ~Thread() = default;  // the owner has joined it, or leaves it

  // False when it cannot be created. Only while no thread is held.
  [[nodiscard]] bool Start(Body body, void* context, int32_t priority) noexcept;
  // Whether a started thread has not been joined yet; it may have ended.
  bool held() const noexcept { return handle_ != Never() && handle_ != nullptr; }
  // Whether the held thread has ended: joining it does not wait.
  bool ended() const noexcept;
  // Whether there is nothing left to join; not before the first Join().
  bool joined() const noexcept { return handle_ == nullptr; }
  // Waits for the end of the held thread, if there is one, and lets go of it.
  void Join() noexcept;
  // Waits for the event or the thread's end; true when the event came, also when both did.
  bool WaitForEventOrEnd(Event& event) noexcept;

 private:
  // Tells a thread that never ran (all bits set) from one that has been joined (null).
  static void* Never() noexcept { return reinterpret_cast<void*>(~uintptr_t{0}); }
  void* handle_ = Never();
};

// One pointer per thread, null at first. Attach before use and Detach as often: the slot is taken
// with the first user and given back with the last. Attach and Detach are not thread-safe.
class ThreadSlot {
 public:
  constexpr ThreadSlot() noexcept = default;
  // False when the system has no slot left; Get is then null and Set is ignored.
  bool Attach() noexcept;
  void Detach() noexcept;
  void* Get() const noexcept;
  // False when the slot could not be written.
  bool Set(void* value) noexcept;

 private:
  int users_ = 0;
  unsigned long index_ = 0;
  bool taken_ = false;
};

// Puts a message into a window's queue; null is no window. Any thread. Native builds have no
// windows: there the hook below receives the message.
void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept;

using PostHook = void (*)(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam);
void SetPostHook(PostHook hook) noexcept;  // native builds only

}  // namespace kelvo
