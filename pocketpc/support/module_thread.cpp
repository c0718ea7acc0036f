#include "pocketpc/support/module.h"

#include <windows.h>

#include "base/memory/heap.h"
#include "base/windows/unique_handle.h"

namespace kelvo {
namespace {

struct Start {
  void (*body)(void*);
  void* context;
  UniqueModule module;
};

DWORD WINAPI Run(void* argument) noexcept {
  HeapPtr<Start> start(static_cast<Start*>(argument));
  const auto body = start->body;
  void* const context = start->context;
  const HMODULE module = start->module.Release();
  start.Reset();
  body(context);
  FreeLibraryAndExitThread(module, 0);
}

}  // namespace

bool StartModuleThread(void (*body)(void*), void* context) noexcept {
  HeapPtr<Start> start(HeapNew<Start>());
  HMODULE module;
  if (!start || !GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                    reinterpret_cast<const wchar_t*>(&Run), &module)) {
    return false;
  }
  start->body = body;
  start->context = context;
  start->module.Reset(module);
  const UniqueObject thread(CreateThread(nullptr, 0, &Run, start.get(), 0, nullptr));
  if (!thread) return false;
  static_cast<void>(start.Release());  // the thread's now
  return true;
}

}  // namespace kelvo
