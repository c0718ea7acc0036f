// Calls an operation of an object as a host with its own declarations does: by its place in the
// table that the object's first word points to.
#pragma once

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

}  // namespace kelvo::test
