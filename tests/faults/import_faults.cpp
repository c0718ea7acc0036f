#include "tests/faults/import_faults.h"

#include <commctrl.h>
#include <stdlib.h>
#include "base/windows/pocketpc.h"

#include <atomic>
#include <cstring>

namespace kelvo::test {
namespace {

std::atomic<long> g_left{-1};
std::atomic<const char*> g_failed{nullptr};

bool Fails(const char* name) {
  if (g_left < 0 || g_left.fetch_sub(1) != 0) return false;
  g_failed = name;
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return true;
}

// One for each function of the table below, which has a line for each.
template <int kLine, class Type>
struct Hook;
#define HOOK_FOR(convention)                             \
  template <int kLine, class R, class... A>              \
  struct Hook<kLine, R(convention*)(A...)> {             \
    static inline R(convention* real)(A...) = nullptr;   \
    static inline const char* name = nullptr;            \
    static inline R failure{};                           \
    static R convention Call(A... arguments) {           \
      return Fails(name) ? failure : real(arguments...); \
    }                                                    \
  };
HOOK_FOR(WINAPI)
#ifdef __i386__
HOOK_FOR(__cdecl)
#endif

struct Import {
  const char* name;
  void* call;
  void** real;
};

template <int kLine, class Type, class Failure>
Import Make(const char* name, Type, Failure failure) {
  using Hooked = Hook<kLine, Type>;
  Hooked::name = name;
  Hooked::failure = failure;
  return {name, reinterpret_cast<void*>(&Hooked::Call), reinterpret_cast<void**>(&Hooked::real)};
}

#define FAILING(function, failure) Make<__LINE__>(#function, &::function, failure)
#define KEY_ERROR ERROR_NOT_ENOUGH_MEMORY

std::wstring g_root;
std::atomic<long> g_blocks{0};

std::wstring Below(const wchar_t* path) {
  return path[0] == L'\\' && path[1] != L'\\' ? g_root + path : path;
}
HANDLE WINAPI CreateFileBelow(const wchar_t* path, DWORD access, DWORD share,
                              SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                              HANDLE pattern) {
  return CreateFileW(Below(path).c_str(), access, share, security, disposition, flags, pattern);
}
HANDLE WINAPI FindFirstFileBelow(const wchar_t* path, WIN32_FIND_DATAW* data) {
  return FindFirstFileW(Below(path).c_str(), data);
}
// The scan need not wait.
UINT_PTR WINAPI SetTimerNow(HWND window, UINT_PTR id, UINT, TIMERPROC procedure) {
  return SetTimer(window, id, 1, procedure);
}
void* Counted(void* block) {
  if (block) ++g_blocks;
  return block;
}
void* __cdecl MallocCounted(size_t bytes) {
  return Counted(malloc(bytes));
}
void* __cdecl CallocCounted(size_t count, size_t bytes) {
  return Counted(calloc(count, bytes));
}
void* __cdecl ReallocCounted(void* block, size_t bytes) {
  return block ? realloc(block, bytes) : Counted(malloc(bytes));
}
void __cdecl FreeCounted(void* block) {
  if (block) --g_blocks;
  free(block);
}

// What stands behind a function from now on.
const struct {
  const char* name;
  void* function;
} kDetours[] = {
    {"CreateFileW", reinterpret_cast<void*>(&CreateFileBelow)},
    {"FindFirstFileW", reinterpret_cast<void*>(&FindFirstFileBelow)},
    {"SetTimer", reinterpret_cast<void*>(&SetTimerNow)},
    {"malloc", reinterpret_cast<void*>(&MallocCounted)},
    {"calloc", reinterpret_cast<void*>(&CallocCounted)},
    {"realloc", reinterpret_cast<void*>(&ReallocCounted)},
};

Import* Imports(size_t* count) {
  static Import imports[] = {
      FAILING(malloc, nullptr),
      FAILING(calloc, nullptr),
      FAILING(realloc, nullptr),
      FAILING(SysAllocString, nullptr),
      FAILING(CreateFileW, INVALID_HANDLE_VALUE),
      FAILING(FindFirstFileW, INVALID_HANDLE_VALUE),
      FAILING(FindNextFileW, FALSE),
      FAILING(ReadFile, FALSE),
      FAILING(WriteFile, FALSE),
      FAILING(FlushFileBuffers, FALSE),
      FAILING(SetFilePointer, INVALID_SET_FILE_POINTER),
      FAILING(GetFileSize, INVALID_FILE_SIZE),
      FAILING(GetFileAttributesW, INVALID_FILE_ATTRIBUTES),
      FAILING(SetFileAttributesW, FALSE),
      FAILING(DeleteFileW, FALSE),
      FAILING(MoveFileW, FALSE),
      FAILING(MoveFileExW, FALSE),
      FAILING(RegCreateKeyExW, KEY_ERROR),
      FAILING(RegOpenKeyExW, KEY_ERROR),
      FAILING(RegQueryValueExW, KEY_ERROR),
      FAILING(RegSetValueExW, KEY_ERROR),
      FAILING(FindResourceW, nullptr),
      FAILING(LoadResource, nullptr),
      FAILING(LockResource, nullptr),
      FAILING(LoadLibraryW, nullptr),
      FAILING(LoadStringW, 0),
      FAILING(LoadImageW, nullptr),
      FAILING(LoadCursorW, nullptr),
      FAILING(MultiByteToWideChar, 0),
      FAILING(WideCharToMultiByte, 0),
      FAILING(CreateThread, nullptr),
      FAILING(CreateEventW, nullptr),
      FAILING(TlsSetValue, FALSE),
      FAILING(CreateWindowExW, nullptr),
      FAILING(CreatePopupMenu, nullptr),
      FAILING(AppendMenuW, FALSE),
      FAILING(TrackPopupMenuEx, FALSE),
      FAILING(CreateFontIndirectW, nullptr),
      FAILING(ImageList_Create, nullptr),
      FAILING(ImageList_ReplaceIcon, -1),
      FAILING(PropertySheetW, -1),
      FAILING(DialogBoxParamW, -1),
      FAILING(SHInitDialog, FALSE),
      FAILING(SHCreateMenuBar, FALSE),
      FAILING(SetTimer, 0),
      FAILING(MessageBoxW, 0),
      FAILING(PostMessageW, FALSE),
  };
  *count = sizeof(imports) / sizeof(imports[0]);
  return imports;
}

void Put(IMAGE_THUNK_DATA* place, void* function) {
  DWORD old;
  VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &old);
  place->u1.Function = reinterpret_cast<uintptr_t>(function);
  VirtualProtect(place, sizeof(*place), old, &old);
}

void Exchange(const char* name, IMAGE_THUNK_DATA* place) {
  if (strcmp(name, "free") == 0) Put(place, reinterpret_cast<void*>(&FreeCounted));
  size_t count;
  const Import* const imports = Imports(&count);
  for (const Import* import = imports; import < imports + count; ++import) {
    if (strcmp(import->name, name) != 0) continue;
    *import->real = reinterpret_cast<void*>(place->u1.Function);
    for (const auto& detour : kDetours) {
      if (strcmp(detour.name, name) == 0) *import->real = detour.function;
    }
    Put(place, import->call);
  }
}

}  // namespace

ImportFaults::ImportFaults(HMODULE library, const std::wstring& root) {
  g_root = root;
  char* const base = reinterpret_cast<char*>(library);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
      base + nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
  for (; from->Name; ++from) {
    const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
    auto* place = reinterpret_cast<IMAGE_THUNK_DATA*>(base + from->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      Exchange(reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData)->Name,
               place);
    }
  }
}

long ImportFaults::blocks() const {
  return g_blocks;
}
void ImportFaults::Free(void* block) {
  FreeCounted(block);
}
void ImportFaults::Arm(long successes) {
  g_failed = nullptr;
  g_left = successes;
}
const char* ImportFaults::Disarm() {
  g_left = -1;
  return g_failed;
}

}  // namespace kelvo::test
