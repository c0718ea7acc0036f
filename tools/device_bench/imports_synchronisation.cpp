// Imports: threads, events, critical sections, thread slots, time.
#include <memory>

#include "fail.h"
#include "process.h"

namespace bench {
namespace {

constexpr uint32_t kInfinite = 0xFFFFFFFF;
constexpr uint32_t kTimeout = 0x102;
constexpr uint32_t kEventReset = 2, kEventSet = 3;
constexpr uint32_t kTlsAlloc = 0, kTlsFree = 1;
constexpr uint32_t kSlots = 64;
constexpr uint64_t kMicroseconds = 1000;

uint64_t Deadline(Process& p, uint32_t milliseconds) {
  return milliseconds == kInfinite ? kNever : p.threads.now() + milliseconds * kMicroseconds;
}

// Takes the signal of an event that is not manual.
bool TakeSignal(Process& p, uint32_t handle) {
  if (const auto event = p.events.find(handle); event != p.events.end()) {
    const bool signalled = event->second.signalled;
    if (signalled && !event->second.manual) event->second.signalled = false;
    return signalled;
  }
  const auto thread = p.thread_handles.find(handle);
  if (thread == p.thread_handles.end()) Fail("waiting for %#x, which is no handle", handle);
  return p.threads.HasEnded(thread->second);
}

uint32_t WaitForAny(Process& p, std::vector<uint32_t> handles, uint32_t milliseconds) {
  p.threads.Wait(
      [&p, handles = std::move(handles)](uint32_t* result) {
        for (size_t i = 0; i < handles.size(); ++i) {
          if (!TakeSignal(p, handles[i])) continue;
          *result = static_cast<uint32_t>(i);
          return true;
        }
        return false;
      },
      Deadline(p, milliseconds), kTimeout);
  return 0;
}

void ProvideThreads(Process& process) {
  process.Provide("CreateThread", [](Process& p) {
    const uint32_t thread = p.threads.Start(p.Argument(2), p.Argument(3));
    if (p.Argument(5) != 0) p.machine.SetWord(p.Argument(5), thread);
    const uint32_t handle = p.NewHandle();
    p.thread_handles[handle] = thread;
    return handle;
  });
  process.Provide("SetThreadPriority", [](Process& p) {
    if (p.thread_handles.count(p.Argument(0)) == 0) Fail("SetThreadPriority: no thread");
    p.priorities.insert(p.Argument(1));
    return 1u;
  });
  process.Provide("Sleep", [](Process& p) {
    p.threads.Wait([](uint32_t*) { return false; }, Deadline(p, p.Argument(0)));
    return 0u;
  });
  process.Provide("GetTickCount", [](Process& p) {
    return static_cast<uint32_t>(p.threads.now() / kMicroseconds);
  });
  process.Provide("WaitForSingleObject",
                  [](Process& p) { return WaitForAny(p, {p.Argument(0)}, p.Argument(1)); });
  process.Provide("WaitForMultipleObjects", [](Process& p) {
    if (p.Argument(2) != 0) Fail("the device cannot wait for all objects");
    std::vector<uint32_t> handles;
    for (uint32_t i = 0; i < p.Argument(0); ++i) {
      handles.push_back(p.machine.Word(p.Argument(1) + 4 * i));
    }
    return WaitForAny(p, handles, p.Argument(3));
  });
  process.Provide("CreateEventW", [](Process& p) {
    const uint32_t handle = p.NewHandle();
    p.events[handle] = {p.Argument(1) != 0, p.Argument(2) != 0};
    return handle;
  });
  process.Provide("EventModify", [](Process& p) {
    const auto event = p.events.find(p.Argument(0));
    const uint32_t operation = p.Argument(1);
    if (event == p.events.end()) return 0u;
    if (operation != kEventReset && operation != kEventSet) Fail("EventModify: %u", operation);
    event->second.signalled = operation == kEventSet;
    return 1u;
  });
}

void ProvideSections(Process& process) {
  struct Section {
    uint32_t owner = 0;
    uint32_t depth = 0;
  };
  const auto sections = std::make_shared<std::map<uint32_t, Section>>();
  const auto get = [sections](uint32_t address) -> Section& {
    const auto found = sections->find(address);
    if (found == sections->end()) Fail("%#x is no critical section", address);
    return found->second;
  };
  process.Provide("InitializeCriticalSection", [sections](Process& p) {
    if (!sections->emplace(p.Argument(0), Section{}).second) Fail("a section initialised twice");
    return 0u;
  });
  process.Provide("DeleteCriticalSection", [sections, get](Process& p) {
    if (get(p.Argument(0)).depth != 0) Fail("a section deleted while it is held");
    sections->erase(p.Argument(0));
    return 0u;
  });
  process.Provide("EnterCriticalSection", [get](Process& p) {
    const uint32_t address = p.Argument(0), thread = p.threads.current();
    const auto enter = [get, address, thread](uint32_t*) {
      Section& section = get(address);
      if (section.depth != 0 && section.owner != thread) return false;
      section.owner = thread;
      ++section.depth;
      return true;
    };
    uint32_t unused;
    if (!enter(&unused)) p.threads.Wait(enter);
    return 0u;
  });
  process.Provide("LeaveCriticalSection", [get](Process& p) {
    Section& section = get(p.Argument(0));
    if (section.depth == 0 || section.owner != p.threads.current()) {
      Fail("a section left by a thread that does not hold it");
    }
    --section.depth;
    return 0u;
  });
}

void ProvideSlots(Process& process) {
  struct Slots {
    uint64_t taken = 0;
    std::map<std::pair<uint32_t, uint32_t>, uint32_t> values;  // slot, thread
  };
  const auto slots = std::make_shared<Slots>();
  process.Provide("TlsCall", [slots](Process& p) {
    const uint32_t operation = p.Argument(0), slot = p.Argument(1);
    if (operation == kTlsFree) {
      if (slot >= kSlots || (slots->taken >> slot & 1) == 0) Fail("TlsFree: slot %u", slot);
      slots->taken &= ~(uint64_t{1} << slot);
      return 1u;
    }
    if (operation != kTlsAlloc) Fail("TlsCall: operation %u", operation);
    for (uint32_t i = 0; i < kSlots; ++i) {
      if ((slots->taken >> i & 1) != 0) continue;
      slots->taken |= uint64_t{1} << i;
      return i;
    }
    return 0xFFFFFFFFu;
  });
  process.Provide("TlsGetValue", [slots](Process& p) {
    return slots->values[{p.Argument(0), p.threads.current()}];
  });
  process.Provide("TlsSetValue", [slots](Process& p) {
    if (p.Argument(0) >= kSlots) return 0u;
    slots->values[{p.Argument(0), p.threads.current()}] = p.Argument(1);
    return 1u;
  });
}

}  // namespace

void ProvideSynchronisation(Process& process) {
  ProvideThreads(process);
  ProvideSections(process);
  ProvideSlots(process);
}

}  // namespace bench
