// The bridge as its host sees it: a library of this machine with the device's library behind it.
#include <windows.h>

#include <stdint.h>

#include "engine.h"
#include "faults.h"
#include "library.h"

namespace {

bridge::FaultWatch* g_fault_watch;

BOOL CallEntry(HMODULE module, DWORD reason, void* process_ends) {
  const uint32_t words[] = {reinterpret_cast<uint32_t>(module), reason,
                            reinterpret_cast<uint32_t>(process_ends)};
  return static_cast<BOOL>(
      bridge::CurrentEngine().Call(bridge::g_library->image.entry(), words, 3));
}

void Close() {
  bridge::CloseEngines();
  delete g_fault_watch;
  delete bridge::g_library;
  bridge::g_library = nullptr;
}

}  // namespace

extern "C" __declspec(dllexport) void* __cdecl GetFeature(int32_t id) {
  return bridge::g_library->GetFeature(id);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID process_ends) {
  switch (reason) {
    case DLL_PROCESS_ATTACH: {
      bridge::StartEngines();
      bridge::g_library = new bridge::Library(module);
      g_fault_watch = new bridge::FaultWatch;
      const BOOL attached = CallEntry(module, reason, process_ends);
      if (!attached) Close();
      return attached;
    }
    case DLL_PROCESS_DETACH: {
      const BOOL detached = CallEntry(module, reason, process_ends);
      // At the end of the process other threads were stopped wherever they were.
      if (!process_ends) Close();
      return detached;
    }
    case DLL_THREAD_DETACH:
      // The device's library does nothing for single threads.
      bridge::EndThread();
      return TRUE;
    default:
      return TRUE;
  }
}
