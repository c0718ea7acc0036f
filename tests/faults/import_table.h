// The functions that Kelvo.dll imports and that can fail, and those that take and give back what
// must not leak. What cannot fail while its arguments are alive (places of windows, messages,
// locks, waits) has no entry.
#pragma once

#include <stddef.h>
#include <windows.h>

#include <atomic>

namespace kelvo::test {

// What the library takes and has to give back.
enum Kind {
  kBlocks,
  kHandles,
  kSearches,
  kKeys,
  kModules,
  kTexts,
  kMenus,
  kFonts,
  kImageLists,
  kIcons,
  kClasses,
  kLocks,
  kThreadSlots,
  kApartments,
  kKinds,
};
inline constexpr const char* kKindNames[kKinds] = {
    "blocks", "handles", "searches", "keys",    "modules", "texts", "menus",
    "fonts",  "images",  "icons",    "classes", "locks",   "slots", "apartments"};
inline std::atomic<long> g_held[kKinds];

struct Import {
  const char* name;
  void* call;   // what the library calls instead
  void** real;  // what that goes on to
};
const Import* ImportTable(size_t* count);

// Whether this call is the one that is to fail; the table asks once a call.
bool CallFails(const char* name);

}  // namespace kelvo::test
