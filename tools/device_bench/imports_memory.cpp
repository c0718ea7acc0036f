// Imports: the C heap, bytes, texts, sorting.
#include <string.h>

#include "fail.h"
#include "process.h"

namespace bench {
namespace {

// The element that is being moved, outside the heap: sorting takes no memory.
constexpr uint32_t kSortRoom = 0x50000000, kSortRoomBytes = 0x1000;

// Stable insertion: the order of equal elements does not depend on this machine's C library.
uint32_t Sort(Process& p) {
  const uint32_t base = p.Argument(0), count = p.Argument(1), bytes = p.Argument(2);
  const uint32_t compare = p.Argument(3);
  if (count < 2) return 0;
  if (bytes > kSortRoomBytes) Fail("qsort of elements of %u bytes", bytes);
  const uint32_t moving = kSortRoom;
  const auto item = [&](uint32_t i) { return base + i * bytes; };
  const auto copy = [&](uint32_t to, uint32_t from) {
    memcpy(p.machine.At(to, bytes), p.machine.At(from, bytes), bytes);
  };
  for (uint32_t i = 1; i < count; ++i) {
    copy(moving, item(i));
    uint32_t at = i;
    while (at > 0 &&
           static_cast<int32_t>(p.machine.RunInside(compare, {item(at - 1), moving})) > 0) {
      copy(item(at), item(at - 1));
      --at;
    }
    copy(item(at), moving);
  }
  return 0;
}

uint32_t CopyBytes(Process& p) {
  const uint32_t to = p.Argument(0), bytes = p.Argument(2);
  if (bytes != 0) memmove(p.machine.At(to, bytes), p.machine.At(p.Argument(1), bytes), bytes);
  return to;
}

}  // namespace

void ProvideMemory(Process& process) {
  process.machine.Map(kSortRoom, kSortRoomBytes);
  process.Provide("malloc", [](Process& p) { return p.heap.Take(p.Argument(0)); });
  process.Provide("calloc", [](Process& p) {
    const uint64_t bytes = uint64_t{p.Argument(0)} * p.Argument(1);
    return bytes >> 32 != 0 ? 0 : p.heap.TakeZeroed(static_cast<uint32_t>(bytes));
  });
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
  process.Provide("wcslen", [](Process& p) {
    return static_cast<uint32_t>(p.machine.Wide(p.Argument(0)).size());
  });
  process.Provide("strcmp", [](Process& p) {
    return static_cast<uint32_t>(
        p.machine.Text(p.Argument(0)).compare(p.machine.Text(p.Argument(1))));
  });
  process.Provide("qsort", Sort);
}

}  // namespace bench
