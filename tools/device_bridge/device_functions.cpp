#include "device_functions.h"

#include <windows.h>

#include <commctrl.h>
#include <stdlib.h>
#include <string.h>

#include "faults.h"
#include "library.h"

namespace bridge {
namespace {

BOOL WINAPI ModifyEvent(HANDLE event, DWORD operation) {
  switch (operation) {
    case 1:
      return PulseEvent(event);
    case 2:
      return ResetEvent(event);
    case 3:
      return SetEvent(event);
    default:
      Fail("EventModify: operation %lu", operation);
  }
}

DWORD WINAPI CallTls(DWORD operation, DWORD slot) {
  return operation == 0 ? TlsAlloc() : static_cast<DWORD>(TlsFree(slot));
}

LONG WINAPI TestExchange(LONG* word, LONG expected, LONG next) {
  return InterlockedCompareExchange(word, next, expected);
}

FARPROC WINAPI GetProcAddressWide(HMODULE module, const wchar_t* name) {
  if (reinterpret_cast<uintptr_t>(name) <= 0xFFFF) {
    return GetProcAddress(module, reinterpret_cast<const char*>(name));
  }
  char narrow[128];
  if (WideCharToMultiByte(CP_ACP, 0, name, -1, narrow, sizeof(narrow), nullptr, nullptr) == 0)
    return nullptr;
  return GetProcAddress(module, narrow);
}

// The device's directory entry (tools/device/headers/minwinbase.h).
struct DeviceFindData {
  DWORD attributes;
  FILETIME times[3];
  DWORD size[2];
  DWORD object_id;
  WCHAR name[MAX_PATH];
};
constexpr size_t kCommonBytes = offsetof(DeviceFindData, object_id);

void Convert(const WIN32_FIND_DATAW& found, DeviceFindData* out) {
  memcpy(out, &found, kCommonBytes);
  out->object_id = 0;
  memcpy(out->name, found.cFileName, sizeof(out->name));
}

HANDLE WINAPI FindFirst(const wchar_t* pattern, DeviceFindData* out) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(pattern, &found);
  if (search != INVALID_HANDLE_VALUE) Convert(found, out);
  return search;
}

BOOL WINAPI FindNext(HANDLE search, DeviceFindData* out) {
  WIN32_FIND_DATAW found;
  if (!FindNextFileW(search, &found)) return FALSE;
  Convert(found, out);
  return TRUE;
}

// A card's driver that lacks what a file system may lack.
bool OnPlainCard() {
  if (GetEnvironmentVariableW(L"KELVO_PLAIN_CARD", nullptr, 0) == 0) return false;
  SetLastError(ERROR_NOT_SUPPORTED);
  return true;
}

BOOL WINAPI FlushFile(HANDLE file) {
  return !OnPlainCard() && FlushFileBuffers(file);
}

// The second file takes the first one's place, which must be there.
BOOL WINAPI ReplaceWithFile(const wchar_t* deleted, const wchar_t* renamed) {
  return !OnPlainCard() && GetFileAttributesW(deleted) != INVALID_FILE_ATTRIBUTES &&
         MoveFileExW(renamed, deleted, MOVEFILE_REPLACE_EXISTING);
}

// From 0, the most urgent, to 7, which runs when nothing else does.
BOOL WINAPI SetPriority(HANDLE thread, int priority) {
  const int kHere[] = {THREAD_PRIORITY_TIME_CRITICAL, THREAD_PRIORITY_HIGHEST,
                       THREAD_PRIORITY_ABOVE_NORMAL,  THREAD_PRIORITY_NORMAL,
                       THREAD_PRIORITY_BELOW_NORMAL,  THREAD_PRIORITY_LOWEST,
                       THREAD_PRIORITY_LOWEST,        THREAD_PRIORITY_IDLE};
  if (priority < 0 || priority > 7) Fail("SetThreadPriority: %d", priority);
  return SetThreadPriority(thread, kHere[priority]);
}

// The device's flag for a sheet as large as the screen is another one's here; sheets of the
// stand-in are that large anyway.
constexpr DWORD kMaximized = 0x2000;

INT_PTR WINAPI ShowSheet(const PROPSHEETHEADERW* header) {
  const char* page = reinterpret_cast<const char*>(header->ppsp);
  for (UINT i = 0; i < header->nPages; ++i, page += *reinterpret_cast<const DWORD*>(page)) {
    const DWORD bytes = *reinterpret_cast<const DWORD*>(page);
    if (bytes != 40) Fail("PropertySheetW: a page of %lu bytes, not 40", bytes);
  }
  PROPSHEETHEADERW copy = {};
  memcpy(&copy, header, header->dwSize);
  copy.dwFlags &= ~kMaximized;
  return PropertySheetW(&copy);
}

// The one function that is handed C's functions, which have no stubs, and calls them in C's way.
void __cdecl Sort(void* items, size_t count, size_t bytes, uint32_t compare) {
  Stubs& stubs = g_library->stubs;
  if (stubs.Contains(compare)) compare = stubs.At(compare).function;
  if (g_library->image.Contains(compare)) compare = stubs.Add({compare, 2, Convention::kC});
  qsort(items, count, bytes, reinterpret_cast<int(__cdecl*)(const void*, const void*)>(compare));
}

const struct {
  const char* name;
  void* function;
} kOwn[] = {
    {"EventModify", reinterpret_cast<void*>(&ModifyEvent)},
    {"TlsCall", reinterpret_cast<void*>(&CallTls)},
    {"InterlockedTestExchange", reinterpret_cast<void*>(&TestExchange)},
    {"GetProcAddressW", reinterpret_cast<void*>(&GetProcAddressWide)},
    {"FindFirstFileW", reinterpret_cast<void*>(&FindFirst)},
    {"DeleteAndRenameFile", reinterpret_cast<void*>(&ReplaceWithFile)},
    {"FindNextFileW", reinterpret_cast<void*>(&FindNext)},
    {"FlushFileBuffers", reinterpret_cast<void*>(&FlushFile)},
    {"SetThreadPriority", reinterpret_cast<void*>(&SetPriority)},
    {"PropertySheetW", reinterpret_cast<void*>(&ShowSheet)},
    {"qsort", reinterpret_cast<void*>(&Sort)},
    {"malloc", reinterpret_cast<void*>(&HeapAllocate)},
    {"calloc", reinterpret_cast<void*>(&HeapAllocateZeroed)},
    {"realloc", reinterpret_cast<void*>(&HeapResize)},
    {"free", reinterpret_cast<void*>(&HeapFreeBlock)},
};

// Their arguments and results travel in registers of another kind here.
const char* const kDoubles[] = {"floor", "ceil",  "sqrt", "pow", "exp",
                                "log",   "log10", "sin",  "cos", "fabs"};

}  // namespace

uint32_t DeviceFunction(const char* name) {
  for (const char* function : kDoubles) {
    if (strcmp(function, name) == 0)
      Fail("%s takes a double, which the bridge does not pass on", name);
  }
  for (const auto& own : kOwn) {
    if (strcmp(own.name, name) == 0) return reinterpret_cast<uint32_t>(own.function);
  }
  return 0;
}

}  // namespace bridge
