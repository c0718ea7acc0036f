#include "tests/schedules/scheduler.h"

#include <sanitizer/asan_interface.h>
#include <sanitizer/common_interface_defs.h>
#include <string.h>
#include <ucontext.h>

#include "base/memory/heap.h"
#include "base/sync/lock.h"
#include "base/sync/thread.h"

#ifdef __SANITIZE_ADDRESS__
#define WITH_SANITIZER(call) call
#else
#define WITH_SANITIZER(call) static_cast<void>(0)
#endif

namespace kelvo {
namespace test {

bool g_no_threads = false;

namespace {

constexpr size_t kMostSteps = 20000;

struct Fibre {
  ucontext_t context;
  char* stack = nullptr;
  size_t stack_bytes = 0;
  void* fake_stack = nullptr;
  bool lives = false;
  bool sleeps = false;
  int locks = 0;
  bool (*holds)(const void*) = nullptr;  // what it waits for
  const void* waits_with = nullptr;

  bool Runnable() const { return lives && (!holds || holds(waits_with)); }
};

Fibre g_main, g_host, g_thread;
Fibre* g_now = &g_main;
void (*g_host_body)();
Thread::Body g_thread_body;
void* g_thread_context;
const Plan* g_plan;
size_t g_next;  // in the plan
size_t g_points;
size_t g_steps;
bool g_switching;
std::string g_failure;

Fibre& Other() {
  return g_now == &g_host ? g_thread : g_host;
}

void SwitchTo(Fibre& next, bool for_good = false) {
  Fibre& last = *g_now;
  g_now = &next;
  static_cast<void>(for_good);
  WITH_SANITIZER(__sanitizer_start_switch_fiber(for_good ? nullptr : &last.fake_stack, next.stack,
                                                next.stack_bytes));
  swapcontext(&last.context, &next.context);
  WITH_SANITIZER(__sanitizer_finish_switch_fiber(last.fake_stack, nullptr, nullptr));
}

// Nothing of this run goes on.
void GiveUp(const std::string& why) {
  Fail(why);
  SwitchTo(g_main, true);
}

void EnterHost() {
  const void* bottom = nullptr;
  static_cast<void>(bottom);
  WITH_SANITIZER(__sanitizer_finish_switch_fiber(nullptr, &bottom, &g_main.stack_bytes));
  g_main.stack = static_cast<char*>(const_cast<void*>(bottom));
  g_host_body();
  g_host.lives = false;
  SwitchTo(g_main, true);
}

void EnterThread() {
  WITH_SANITIZER(__sanitizer_finish_switch_fiber(nullptr, nullptr, nullptr));
  g_thread_body(g_thread_context);
  Point();
  g_thread.lives = false;
  if (!g_host.Runnable()) GiveUp("the host waits for ever");
  SwitchTo(g_host, true);
}

void Make(Fibre& fibre, void (*body)()) {
  static constexpr size_t kStackBytes = 256 * 1024;
  if (!fibre.stack) {
    fibre.stack = new char[kStackBytes];
    fibre.stack_bytes = kStackBytes;
  }
  ASAN_UNPOISON_MEMORY_REGION(fibre.stack, kStackBytes);  // of one that was dropped
  getcontext(&fibre.context);
  fibre.context.uc_stack.ss_sp = fibre.stack;
  fibre.context.uc_stack.ss_size = kStackBytes;
  fibre.context.uc_link = nullptr;
  makecontext(&fibre.context, body, 0);
  fibre.lives = true;
  fibre.sleeps = false;
  fibre.locks = 0;
  fibre.holds = nullptr;
}

}  // namespace

Outcome RunScheduled(const Plan& plan, void (*host)()) {
  g_plan = &plan;
  g_next = g_points = g_steps = 0;
  g_switching = true;
  g_failure.clear();
  g_no_threads = false;
  g_host_body = host;
  g_thread.lives = false;
  Make(g_host, EnterHost);
  SwitchTo(g_host);
  return {g_points, g_failure};
}

void Point() noexcept {
  if (g_now == &g_main) return;
  if (g_steps++ == kMostSteps) GiveUp("it does not come to an end");
  if (!g_switching || !Other().Runnable()) return;
  const size_t point = g_points++;
  if (g_next == g_plan->size() || (*g_plan)[g_next] != point) return;
  ++g_next;
  SwitchTo(Other());
}

void Sleep() {
  g_now->sleeps = true;
  if (Other().Runnable()) SwitchTo(Other());
  g_now->sleeps = false;
}

void StopSwitching() {
  g_switching = false;
}

void Fail(const std::string& what) {
  if (g_failure.empty()) g_failure = what;
}

bool OnHost() {
  return g_now != &g_thread;
}
bool HoldsALock() {
  return g_now->locks > 0;
}
bool ThreadLives() {
  return g_thread.lives;
}
void KillThread() {
  g_thread.lives = false;
}
void HoldThreadUp() {
  g_thread.holds = [](const void*) { return false; };
}

void WaitForThread(bool sleep_counts) {
  WaitUntil([=] { return !g_thread.Runnable() || (sleep_counts && g_thread.sleeps); });
}

void WaitUntil(bool (*holds)(const void*), const void* context) {
  while (!holds(context)) {
    g_now->holds = holds;
    g_now->waits_with = context;
    if (!Other().Runnable()) GiveUp(OnHost() ? "the host waits for ever" : "both threads wait");
    SwitchTo(Other());
    g_now->holds = nullptr;
  }
}

}  // namespace test

using test::g_now;
using test::g_thread;
using test::Point;
using test::WaitUntil;

namespace {
test::Fibre*& Owner(unsigned char* section) {
  return *reinterpret_cast<test::Fibre**>(section);
}
}  // namespace

Lock::Lock() noexcept {
  Owner(section_) = nullptr;
}
Lock::~Lock() = default;
void Lock::Close() noexcept {
  depth_ = kClosed;
}
void Lock::Enter() noexcept {
  Point();
  if (depth_ == kClosed) test::Fail("a closed lock is entered");
  test::Fibre*& owner = Owner(section_);
  WaitUntil([&] { return !owner || owner == g_now; });
  if (!owner && test::HoldsALock()) test::Fail("two locks are held together");
  owner = g_now;
  ++owner->locks;
  ++depth_;
}
void Lock::Leave() noexcept {
  if (depth_ == 0) return;
  if (Owner(section_) != g_now) test::Fail("a lock is left by another thread");
  --g_now->locks;
  if (--depth_ == 0) Owner(section_) = nullptr;
  Point();
}

Event::Event() noexcept : event_(HeapNew<bool>(false)) {}
Event::~Event() {
  Close();
}
void Event::Set() noexcept {
  Point();
  *static_cast<bool*>(event_) = true;
}
void Event::Reset() noexcept {
  Point();
  *static_cast<bool*>(event_) = false;
}
void Event::Close() noexcept {
  HeapDelete(static_cast<bool*>(std::exchange(event_, nullptr)));
}

bool Thread::Start(Body body, void* context, int32_t) noexcept {
  if (test::g_no_threads) return false;
  if (g_thread.lives) test::Fail("two threads at a time");
  test::g_thread_body = body;
  test::g_thread_context = context;
  Make(g_thread, test::EnterThread);
  handle_ = &g_thread;
  Point();
  return true;
}
bool Thread::ended() const noexcept {
  Point();
  return held() && !g_thread.lives;
}
void Thread::Join() noexcept {
  if (held()) WaitUntil([] { return !g_thread.lives; });
  handle_ = nullptr;
}
bool Thread::WaitForEventOrEnd(Event& event) noexcept {
  const bool& set = *static_cast<bool*>(event.event_);
  WaitUntil([&] { return set || !g_thread.lives; });
  return set;
}

bool ThreadSlot::Attach() noexcept {
  return false;
}
void ThreadSlot::Detach() noexcept {}
void* ThreadSlot::Get() const noexcept {
  return nullptr;
}
bool ThreadSlot::Set(void*) noexcept {
  return false;
}

}  // namespace kelvo
