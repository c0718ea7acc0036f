// The calls that decoding and the effects make, of all that the library imports: the heap, bytes,
// and a system in which nobody else runs and nothing is installed.
#include <string.h>

#include <memory>

#include "fail.h"
#include "process.h"

namespace bench {
namespace {

// Stable insertion: the order of equal elements does not depend on this machine's C library.
uint32_t Sort(Process& p) {
  const uint32_t base = p.Argument(0), count = p.Argument(1), bytes = p.Argument(2),
                 compare = p.Argument(3);
  const uint32_t moving = p.heap.Take(bytes);
  const auto item = [&](uint32_t i) { return base + i * bytes; };
  const auto copy = [&](uint32_t to, uint32_t from) {
    memcpy(p.machine.At(to, bytes), p.machine.At(from, bytes), bytes);
  };
  for (uint32_t i = 1; i < count; ++i) {
    copy(moving, item(i));
    uint32_t at = i;
    for (; at > 0 && static_cast<int32_t>(p.machine.RunInside(compare, {item(at - 1), moving})) > 0;
         --at) {
      copy(item(at), item(at - 1));
    }
    copy(item(at), moving);
  }
  p.heap.Give(moving);
  return 0;
}

uint32_t CopyBytes(Process& p) {
  const uint32_t to = p.Argument(0), bytes = p.Argument(2);
  if (bytes != 0) memmove(p.machine.At(to, bytes), p.machine.At(p.Argument(1), bytes), bytes);
  return to;
}

uint32_t Nothing(Process&) {
  return 0;
}

uint32_t Done(Process&) {
  return 1;
}

void ProvideMemory(Process& process) {
  process.Provide("malloc", [](Process& p) { return p.heap.Take(p.Argument(0)); });
  process.Provide("calloc",
                  [](Process& p) { return p.heap.TakeZeroed(p.Argument(0) * p.Argument(1)); });
  process.Provide("realloc",
                  [](Process& p) { return p.heap.Resize(p.Argument(0), p.Argument(1)); });
  process.Provide("free", [](Process& p) {
    p.heap.Give(p.Argument(0));
    return 0u;
  });
  process.Provide("memcpy", CopyBytes);
  process.Provide("memmove", CopyBytes);
  process.Provide("memset", [](Process& p) {
    const uint32_t to = p.Argument(0), bytes = p.Argument(2);
    if (bytes != 0) memset(p.machine.At(to, bytes), static_cast<int>(p.Argument(1)), bytes);
    return to;
  });
  process.Provide("memcmp", [](Process& p) {
    const uint32_t bytes = p.Argument(2);
    return static_cast<uint32_t>(
        memcmp(p.machine.At(p.Argument(0), bytes), p.machine.At(p.Argument(1), bytes), bytes));
  });
  process.Provide("strlen", [](Process& p) {
    return static_cast<uint32_t>(p.machine.Text(p.Argument(0)).size());
  });
  process.Provide("qsort", Sort);
}

// One thread at a time; one that waits for an event finds it signalled.
void ProvideThreads(Process& process) {
  process.Provide("CreateThread", [](Process& p) {
    p.threads.Start(p.Argument(2), p.Argument(3));
    return p.NewHandle();
  });
  process.Provide("CreateEventW", [](Process& p) { return p.NewHandle(); });
  for (const char* name : {"EventModify", "SetThreadPriority", "CloseHandle"})
    process.Provide(name, Done);
  for (const char* name :
       {"WaitForSingleObject", "WaitForMultipleObjects", "Sleep", "InitializeCriticalSection",
        "DeleteCriticalSection", "EnterCriticalSection", "LeaveCriticalSection"}) {
    process.Provide(name, Nothing);
  }
  const auto slots = std::make_shared<std::vector<uint32_t>>();
  process.Provide("TlsCall", [slots](Process& p) {
    if (p.Argument(0) != 0) return 1u;
    slots->push_back(0);
    return static_cast<uint32_t>(slots->size() - 1);
  });
  process.Provide("TlsGetValue", [slots](Process& p) { return slots->at(p.Argument(0)); });
  process.Provide("TlsSetValue", [slots](Process& p) {
    slots->at(p.Argument(0)) = p.Argument(1);
    return 1u;
  });
}

void ProvideSystem(Process& process) {
  constexpr uint32_t kNotFound = 2, kNotImplemented = 0x80004001;
  process.Provide("RegOpenKeyExW", [](Process&) { return kNotFound; });
  process.Provide("RegCreateKeyExW", [](Process&) { return kNotFound; });
  process.Provide("CoInitializeEx", [](Process&) { return kNotImplemented; });
  for (const char* name : {"LoadLibraryW", "GetSystemInfo", "SetLastError", "GetLastError"}) {
    process.Provide(name, Nothing);
  }
  process.Provide("FreeLibrary", Done);
  process.Provide("PostMessageW", [](Process& p) {
    p.messages.push_back({p.Argument(0), p.Argument(1), p.Argument(2), p.Argument(3)});
    return 1u;
  });
}

}  // namespace

void ProvideImports(Process& process) {
  ProvideMemory(process);
  ProvideThreads(process);
  ProvideSystem(process);
}

}  // namespace bench
