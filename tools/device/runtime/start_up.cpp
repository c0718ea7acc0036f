// The entry point that the loader calls: what the compiler's own runtime library does elsewhere.
// Constructors run before the attach handler; their destructors, registered one by one as the
// objects come to life, run in reverse order after the detach handler.
#include <windows.h>

extern "C" {

using Function = void (*)();
extern Function kelvo_constructors_begin[];
extern Function kelvo_constructors_end[];

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);

// Only its address counts: it stands for "this library" in the registrations.
void* __dso_handle = nullptr;
}

namespace {

struct Registration {
  void (*destroy)(void*);
  void* object;
};

// An object that finds no room stays constructed and is not destroyed.
constexpr int kCapacity = 64;
Registration g_registered[kCapacity];
int g_count;

void DestroyAll() {
  while (g_count > 0) {
    const Registration& last = g_registered[--g_count];
    last.destroy(last.object);
  }
}

}  // namespace

extern "C" {

int __aeabi_atexit(void* object, void (*destroy)(void*), void*) {
  if (g_count == kCapacity) return -1;
  g_registered[g_count++] = {destroy, object};
  return 0;
}

int __cxa_atexit(void (*destroy)(void*), void* object, void* library) {
  return __aeabi_atexit(object, destroy, library);
}

BOOL WINAPI KelvoLibraryEntry(HINSTANCE module, DWORD reason, LPVOID reserved) {
  if (reason == DLL_PROCESS_ATTACH) {
    for (Function* construct = kelvo_constructors_begin; construct < kelvo_constructors_end;
         ++construct) {
      (*construct)();
    }
  }
  const BOOL done = DllMain(module, reason, reserved);
  if (reason == DLL_PROCESS_DETACH || (reason == DLL_PROCESS_ATTACH && !done)) DestroyAll();
  return done;
}
}
