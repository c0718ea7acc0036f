#include "tests/faults/import_faults.h"

#include <stdlib.h>

#include <cstring>

#include "tests/faults/import_table.h"

namespace kelvo::test {
namespace {

std::atomic<long> g_left{-1};
std::atomic<const char*> g_failed{nullptr};
std::wstring g_root;

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
DWORD WINAPI GetFileAttributesBelow(const wchar_t* path) {
  return GetFileAttributesW(Below(path).c_str());
}
BOOL WINAPI SetFileAttributesBelow(const wchar_t* path, DWORD attributes) {
  return SetFileAttributesW(Below(path).c_str(), attributes);
}
BOOL WINAPI DeleteFileBelow(const wchar_t* path) {
  return DeleteFileW(Below(path).c_str());
}
BOOL WINAPI MoveFileBelow(const wchar_t* from, const wchar_t* to) {
  return MoveFileW(Below(from).c_str(), Below(to).c_str());
}
BOOL WINAPI MoveFileExBelow(const wchar_t* from, const wchar_t* to, DWORD flags) {
  return MoveFileExW(Below(from).c_str(), Below(to).c_str(), flags);
}
UINT_PTR WINAPI SetTimerNow(HWND window, UINT_PTR id, UINT, TIMERPROC) {
  return PostMessageW(window, WM_TIMER, id, 0) ? id : 0;
}
// Whatever is shown when something takes long is shown.
DWORD WINAPI LateTickCount() {
  static std::atomic<DWORD> now{0};
  return now += 100;
}
int WINAPI AnswerBox(HWND, const wchar_t*, const wchar_t*, UINT buttons) {
  return (buttons & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
}
BOOL WINAPI LeaveMenu(HMENU, UINT, int, int, HWND, TPMPARAMS*) {
  return TRUE;
}
void* __cdecl ReallocCounted(void* block, size_t bytes) {
  void* const moved = realloc(block, bytes);
  if (!block && moved) ++g_held[kBlocks];
  return moved;
}

// What stands behind a function from now on.
const struct {
  const char* name;
  void* function;
} kDetours[] = {
    {"CreateFileW", reinterpret_cast<void*>(&CreateFileBelow)},
    {"FindFirstFileW", reinterpret_cast<void*>(&FindFirstFileBelow)},
    {"GetFileAttributesW", reinterpret_cast<void*>(&GetFileAttributesBelow)},
    {"SetFileAttributesW", reinterpret_cast<void*>(&SetFileAttributesBelow)},
    {"DeleteFileW", reinterpret_cast<void*>(&DeleteFileBelow)},
    {"MoveFileW", reinterpret_cast<void*>(&MoveFileBelow)},
    {"MoveFileExW", reinterpret_cast<void*>(&MoveFileExBelow)},
    {"SetTimer", reinterpret_cast<void*>(&SetTimerNow)},
    {"GetTickCount", reinterpret_cast<void*>(&LateTickCount)},
    {"MessageBoxW", reinterpret_cast<void*>(&AnswerBox)},
    {"TrackPopupMenuEx", reinterpret_cast<void*>(&LeaveMenu)},
    {"realloc", reinterpret_cast<void*>(&ReallocCounted)},
};

void Exchange(const char* name, IMAGE_THUNK_DATA* place) {
  size_t count;
  const Import* const imports = ImportTable(&count);
  for (const Import* import = imports; import < imports + count; ++import) {
    if (strcmp(import->name, name) != 0) continue;
    *import->real = reinterpret_cast<void*>(place->u1.Function);
    for (const auto& detour : kDetours) {
      if (strcmp(detour.name, name) == 0) *import->real = detour.function;
    }
    DWORD old;
    VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &old);
    place->u1.Function = reinterpret_cast<uintptr_t>(import->call);
    VirtualProtect(place, sizeof(*place), old, &old);
  }
}

void ExchangeAll(HMODULE library) {
  for (auto& held : g_held) held = 0;
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

// The loader's own notification: with the imports found, before the library is entered.
struct Loading {
  ULONG flags;
  const void* path;
  const void* name;
  HMODULE module;
};
using OnLoadingFunction = void(CALLBACK*)(ULONG reason, const Loading* loading, void*);
using Register = LONG(NTAPI*)(ULONG, OnLoadingFunction, void*, void**);
using Unregister = LONG(NTAPI*)(void*);
constexpr ULONG kLoaded = 1;
constexpr wchar_t kLibrary[] = L"Kelvo.dll";

void CALLBACK OnLoading(ULONG reason, const Loading* loading, void*) {
  if (reason == kLoaded && loading->module == GetModuleHandleW(kLibrary))
    ExchangeAll(loading->module);
}
template <class Function>
Function FunctionOf(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

}  // namespace

bool CallFails(const char* name) {
  if (g_left < 0 || g_left.fetch_sub(1) != 0) return false;
  g_failed = name;
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return true;
}

ImportFaults::ImportFaults(const std::wstring& root) {
  g_root = root;
  if (const HMODULE library = GetModuleHandleW(kLibrary)) ExchangeAll(library);
  FunctionOf<Register>("LdrRegisterDllNotification")(0, &OnLoading, nullptr, &cookie_);
}
ImportFaults::~ImportFaults() {
  FunctionOf<Unregister>("LdrUnregisterDllNotification")(cookie_);
}

std::string ImportFaults::Held() const {
  std::string all;
  for (int kind = 0; kind < kKinds; ++kind) {
    if (g_held[kind] == 0) continue;
    all += (all.empty() ? "" : ", ") + std::string(kKindNames[kind]) + " " +
           std::to_string(g_held[kind]);
  }
  return all;
}
long ImportFaults::blocks() const {
  return g_held[kBlocks];
}
void ImportFaults::Free(void* block) {
  if (block) --g_held[kBlocks];
  free(block);
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
