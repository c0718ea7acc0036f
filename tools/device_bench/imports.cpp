// The heap, bytes, and a system in which nobody else runs and nothing is installed.
#include <string.h>

#include "library.h"

namespace bench {
namespace {

// Stable insertion: the order of equal elements does not depend on this machine's C library.
uint32_t Sort(Machine& m) {
  const uint32_t base = m.Argument(0), count = m.Argument(1), bytes = m.Argument(2),
                 compare = m.Argument(3), moving = m.Allocate(bytes);
  const auto item = [&](uint32_t i) { return base + i * bytes; };
  const auto copy = [&](uint32_t to, uint32_t from) {
    memcpy(m.At(to, bytes), m.At(from, bytes), bytes);
  };
  for (uint32_t i = 1; i < count; ++i) {
    copy(moving, item(i));
    uint32_t at = i;
    for (; at > 0 && static_cast<int32_t>(m.Call(compare, {item(at - 1), moving})) > 0; --at)
      copy(item(at), item(at - 1));
    copy(item(at), moving);
  }
  return 0;
}

uint32_t CopyBytes(Machine& m) {
  const uint32_t to = m.Argument(0), bytes = m.Argument(2);
  memmove(m.At(to, bytes), m.At(m.Argument(1), bytes), bytes);
  return to;
}

uint32_t FillBytes(Machine& m) {
  const uint32_t to = m.Argument(0), bytes = m.Argument(2);
  memset(m.At(to, bytes), static_cast<int>(m.Argument(1)), bytes);
  return to;
}

uint32_t CompareBytes(Machine& m) {
  const uint32_t bytes = m.Argument(2);
  return static_cast<uint32_t>(
      memcmp(m.At(m.Argument(0), bytes), m.At(m.Argument(1), bytes), bytes));
}

// Slots lie in the heap.
uint32_t ThreadSlots(Machine& m) {
  return m.Argument(0) == 0 ? m.Allocate(4) : 1;
}

uint32_t SetThreadSlot(Machine& m) {
  m.SetWord(m.Argument(0), m.Argument(1));
  return 1;
}

uint32_t RunThread(Machine& m) {
  m.Call(m.Argument(2), {m.Argument(3)});
  return 1;
}

template <uint32_t kResult>
uint32_t Always(Machine&) {
  return kResult;
}

}  // namespace

Imports ImportsForSound() {
  constexpr uint32_t kNotFound = 2, kNotImplemented = 0x80004001;
  return {
      {"malloc", [](Machine& m) { return m.Allocate(m.Argument(0)); }},
      {"calloc", [](Machine& m) { return m.Allocate(m.Argument(0) * m.Argument(1)); }},
      {"realloc", [](Machine& m) { return m.Resize(m.Argument(0), m.Argument(1)); }},
      {"free", Always<0>},
      {"memcpy", CopyBytes},
      {"memmove", CopyBytes},
      {"memset", FillBytes},
      {"memcmp", CompareBytes},
      {"strlen", [](Machine& m) { return static_cast<uint32_t>(m.Text(m.Argument(0)).size()); }},
      {"qsort", Sort},
      {"CreateThread", RunThread},
      {"TlsCall", ThreadSlots},
      {"TlsGetValue", [](Machine& m) { return m.Word(m.Argument(0)); }},
      {"TlsSetValue", SetThreadSlot},
      {"CreateEventW", Always<1>},
      {"EventModify", Always<1>},
      {"SetThreadPriority", Always<1>},
      {"CloseHandle", Always<1>},
      {"WaitForSingleObject", Always<0>},  // what is waited for has happened
      {"WaitForMultipleObjects", Always<0>},
      {"Sleep", Always<0>},
      {"InitializeCriticalSection", Always<0>},
      {"DeleteCriticalSection", Always<0>},
      {"EnterCriticalSection", Always<0>},
      {"LeaveCriticalSection", Always<0>},
      {"RegOpenKeyExW", Always<kNotFound>},
      {"RegCreateKeyExW", Always<kNotFound>},
      {"CoInitializeEx", Always<kNotImplemented>},
      {"LoadLibraryW", Always<0>},
      {"FreeLibrary", Always<1>},
      {"GetSystemInfo", Always<0>},
      {"SetLastError", Always<0>},
      {"GetLastError", Always<0>},
      {"PostMessageW", Always<1>},
  };
}

}  // namespace bench
