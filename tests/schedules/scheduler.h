// Two threads, the host's and one that the library starts, of which one runs at a time. The other
// goes on where the running one has to wait, and besides at those points that a plan names. Lock,
// Event, Thread and the rest of base/sync/ are implemented on top of this in scheduler.cpp.
#pragma once

#include <stddef.h>

#include <string>
#include <vector>

namespace kelvo::test {

// Numbers of points, counted from 0 where another thread could go on, at which it does.
using Plan = std::vector<size_t>;

struct Outcome {
  size_t points;        // that were come past
  std::string failure;  // the first one; empty: none
};

// Runs `host` as the host's thread. What `host` leaves behind of the other thread is dropped.
Outcome RunScheduled(const Plan& plan, void (*host)());

// The rest is for what runs scheduled; outside it does nothing.

// Another thread may go on here.
void Point() noexcept;
// The other goes on if it can.
void Sleep();
// Nobody may from here on, but where a thread waits.
void StopSwitching();
void Fail(const std::string& what);
bool OnHost();
bool HoldsALock();
bool ThreadLives();
// The system ends the other thread where it stands, or leaves it there.
void KillThread();
void HoldThreadUp();
extern bool g_no_threads;  // none can be started
// Waits until the other thread has ended, waits for this one, or sleeps while `sleep_counts`.
void WaitForThread(bool sleep_counts);

void WaitUntil(bool (*holds)(const void* context), const void* context);
template <class Condition>
void WaitUntil(const Condition& condition) {
  WaitUntil([](const void* context) { return (*static_cast<const Condition*>(context))(); },
            &condition);
}

}  // namespace kelvo::test
