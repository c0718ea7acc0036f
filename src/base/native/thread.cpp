#include "base/sync/thread.h"

#include <pthread.h>
#include <unistd.h>

#include "base/memory/heap.h"

namespace kelvo {
namespace {

PostHook g_post_hook = nullptr;

// One monitor for all events and thread ends: waiting for either of two is then simple.
pthread_mutex_t g_monitor = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t g_changed = PTHREAD_COND_INITIALIZER;

class Monitor {
 public:
  Monitor() { pthread_mutex_lock(&g_monitor); }
  ~Monitor() { pthread_mutex_unlock(&g_monitor); }
  void Wait() { pthread_cond_wait(&g_changed, &g_monitor); }
  void Notify() { pthread_cond_broadcast(&g_changed); }
};

struct Running {
  Thread::Body body;
  void* context;
  pthread_t thread;
  bool ended;
};

void* Enter(void* parameter) {
  Running* running = static_cast<Running*>(parameter);
  running->body(running->context);
  Monitor monitor;
  running->ended = true;
  monitor.Notify();
  return nullptr;
}

}  // namespace

void SleepMs(uint32_t milliseconds) noexcept {
  usleep(milliseconds * 1000);
}

Event::Event() noexcept : event_(HeapNew<bool>(false)) {}
Event::~Event() {
  Close();
}

void Event::Set() noexcept {
  Monitor monitor;
  if (event_) *static_cast<bool*>(event_) = true;
  monitor.Notify();
}

void Event::Reset() noexcept {
  Monitor monitor;
  if (event_) *static_cast<bool*>(event_) = false;
}

void Event::Close() noexcept {
  HeapDelete(static_cast<bool*>(std::exchange(event_, nullptr)));
}

bool Thread::Start(Body body, void* context, int32_t) noexcept {
  Running* running = HeapNew<Running>(Running{body, context, {}, false});
  if (!running) return false;
  if (pthread_create(&running->thread, nullptr, Enter, running) != 0) {
    HeapDelete(running);
    return false;
  }
  handle_ = running;
  return true;
}

bool Thread::ended() const noexcept {
  Monitor monitor;
  return held() && static_cast<const Running*>(handle_)->ended;
}

void Thread::Join() noexcept {
  if (!held()) {
    handle_ = nullptr;
    return;
  }
  Running* running = static_cast<Running*>(std::exchange(handle_, nullptr));
  pthread_join(running->thread, nullptr);
  HeapDelete(running);
}

bool Thread::WaitForEventOrEnd(Event& event) noexcept {
  const Running* running = static_cast<const Running*>(handle_);
  Monitor monitor;
  for (;;) {
    if (event.event_ && *static_cast<bool*>(event.event_)) return true;
    if (running->ended) return false;
    monitor.Wait();
  }
}

bool ThreadSlot::Attach() noexcept {
  if (users_++ == 0) {
    pthread_key_t key;
    taken_ = pthread_key_create(&key, nullptr) == 0;
    index_ = key;
  }
  return taken_;
}

void ThreadSlot::Detach() noexcept {
  if (--users_ > 0 || !taken_) return;
  pthread_key_delete(static_cast<pthread_key_t>(index_));
  taken_ = false;
}

void* ThreadSlot::Get() const noexcept {
  return taken_ ? pthread_getspecific(static_cast<pthread_key_t>(index_)) : nullptr;
}

bool ThreadSlot::Set(void* value) noexcept {
  return taken_ && pthread_setspecific(static_cast<pthread_key_t>(index_), value) == 0;
}

void SetPostHook(PostHook hook) noexcept {
  g_post_hook = hook;
}

void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept {
  if (window && g_post_hook) g_post_hook(window, message, wparam, lparam);
}

}  // namespace kelvo
