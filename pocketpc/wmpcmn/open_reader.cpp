#include "pocketpc/wmpcmn/open_reader.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/memory/heap_text.h"
#include "base/windows/unique_handle.h"
#include "pocketpc/support/module_thread.h"

namespace kelvo {
namespace {

constexpr DWORD kMaxOpenMs = 10000;

// Shared by the one who asks and the opening thread; the last of them destroys it.
struct Attempt {
  LONG owners = 2;
  HeapText path;
  UniqueObject done;
  HRESULT result = E_FAIL;  // both valid once `done` is signalled
  ComPtr<IWMSyncReader> reader;
};

void Drop(Attempt* attempt) noexcept {
  if (InterlockedDecrement(&attempt->owners) == 0) HeapDelete(attempt);
}

// Loaded at run time, so that this DLL also loads where Windows Media is missing.
HRESULT CreateReader(IWMSyncReader** reader) noexcept {
  using Create = HRESULT(WINAPI*)(IUnknown*, DWORD, IWMSyncReader**);
  static const HMODULE module = LoadLibraryW(L"wmvcore.dll");  // for the life of the process
  const FARPROC found = module ? GetProcAddress(module, "WMCreateSyncReader") : nullptr;
  if (!found) return HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
  Create create;
  static_assert(sizeof(create) == sizeof(found));
  memcpy(&create, &found, sizeof(create));
  return create(nullptr, 0, reader);
}

void Run(void* context) noexcept {
  auto* const attempt = static_cast<Attempt*>(context);
  const bool in_apartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
  attempt->result = CreateReader(attempt->reader.Receive());
  if (SUCCEEDED(attempt->result)) attempt->result = attempt->reader->Open(attempt->path.get());
  SetEvent(attempt->done.get());
  Drop(attempt);
  if (in_apartment) CoUninitialize();
}

}  // namespace

HRESULT OpenReader(const wchar_t* path, ComPtr<IWMSyncReader>* reader) noexcept {
  HeapPtr<Attempt> made(HeapNew<Attempt>());
  if (!made || !made->path.Assign(path)) return E_OUTOFMEMORY;
  made->done.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!made->done || !StartModuleThread(&Run, made.get())) return E_OUTOFMEMORY;
  Attempt* const attempt = made.Release();
  HRESULT result = HRESULT_FROM_WIN32(ERROR_TIMEOUT);
  if (WaitForSingleObject(attempt->done.get(), kMaxOpenMs) == WAIT_OBJECT_0) {
    result = attempt->result;
    if (SUCCEEDED(result)) *reader = ComPtr<IWMSyncReader>(attempt->reader.Detach());
  }
  Drop(attempt);
  return result;
}

}  // namespace kelvo
