// Calls an operation of an object as a host with its own declarations does: by its place in the
// table that the object's first word points to. And reads its fields by their offsets.
#pragma once

#include <stddef.h>
#include <string.h>

namespace kelvo::test {

#if defined(__i386__)
#define KELVO_SLOT_CALL __attribute__((thiscall))
#else
#define KELVO_SLOT_CALL
#endif

template <class Result, class... Arguments>
Result CallSlot(void* object, int slot, Arguments... arguments) {
  using Function = Result(KELVO_SLOT_CALL*)(void*, Arguments...);
  void** table = *static_cast<void***>(object);
  return reinterpret_cast<Function>(table[slot])(object, arguments...);
}

template <class T>
T RawField(const void* object, size_t offset) {
  T value;
  memcpy(&value, static_cast<const char*>(object) + offset, sizeof(value));
  return value;
}

}  // namespace kelvo::test
