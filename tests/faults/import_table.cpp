#include "tests/faults/import_table.h"

#include <commctrl.h>
#include <objbase.h>
#include <oleauto.h>
#include <stdlib.h>
#include "base/windows/pocketpc.h"

#include <type_traits>

namespace kelvo::test {
namespace {

// How many of a kind a call that succeeds adds.
struct Change {
  Kind kind = kKinds;
  int by = 0;
};

template <class R>
bool Succeeded(Kind kind, const R& result, const R& failure) {
  if constexpr (std::is_same_v<R, LONG>) {
    if (kind == kKeys) return result == ERROR_SUCCESS;
  }
  return result != failure;
}

// Giving back nothing is allowed for memory and texts.
template <class First, class... More>
bool IsNothing(Kind kind, First first, More...) {
  if constexpr (std::is_pointer_v<First>) return (kind == kBlocks || kind == kTexts) && !first;
  return false;
}
inline bool IsNothing(Kind) {
  return false;
}

template <class R>
struct Failure {
  R value{};
  bool possible = false;
};
template <>
struct Failure<void> {};

// One for each line of the table below.
template <int kLine, class Type>
struct Hook;
#define HOOK_FOR(convention)                                                         \
  template <int kLine, class R, class... A>                                          \
  struct Hook<kLine, R(convention*)(A...)> {                                         \
    using Result = R;                                                                \
    static inline R(convention* real)(A...) = nullptr;                               \
    static inline const char* name = nullptr;                                        \
    static inline Failure<R> failure;                                                \
    static inline Change change;                                                     \
    static R convention Call(A... arguments) {                                       \
      if constexpr (std::is_void_v<R>) {                                             \
        if (!IsNothing(change.kind, arguments...)) g_held[change.kind] += change.by; \
        real(arguments...);                                                          \
      } else {                                                                       \
        if (failure.possible && CallFails(name)) return failure.value;               \
        const R result = real(arguments...);                                         \
        if (change.by && Succeeded(change.kind, result, failure.value))              \
          g_held[change.kind] += change.by;                                          \
        return result;                                                               \
      }                                                                              \
    }                                                                                \
  };
HOOK_FOR(WINAPI)
#ifdef __i386__
HOOK_FOR(__cdecl)
#endif

template <int kLine, class Type>
Import Make(const char* name, Type, Failure<typename Hook<kLine, Type>::Result> failure,
            Change change = {}) {
  using Hooked = Hook<kLine, Type>;
  Hooked::name = name;
  Hooked::failure = failure;
  Hooked::change = change;
  return {name, reinterpret_cast<void*>(&Hooked::Call), reinterpret_cast<void**>(&Hooked::real)};
}

#define FAILS(function, with, ...) \
  Make<__LINE__>(#function, &::function, {with, true}, ##__VA_ARGS__)
// Neither, but behind it stands another function here.
#define ONLY(function) Make<__LINE__>(#function, &::function, {})
#define TAKES(kind) \
  { kind, 1 }
#define GIVES(function, kind) Make<__LINE__>(#function, &::function, {}, {kind, -1})

constexpr LONG kKeyError = ERROR_NOT_ENOUGH_MEMORY;

// Messages that need memory fail by themselves.
LRESULT(WINAPI* g_send_message)(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI SendMessageOrFail(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  constexpr struct {
    UINT message;
    const char* name;
    LRESULT failure;
  } kFailing[] = {{TVM_INSERTITEMW, "TVM_INSERTITEM", 0},
                  {LVM_INSERTITEMW, "LVM_INSERTITEM", -1},
                  {LVM_INSERTCOLUMNW, "LVM_INSERTCOLUMN", -1},
                  {LVM_SORTITEMS, "LVM_SORTITEMS", FALSE},
                  {CB_ADDSTRING, "CB_ADDSTRING", CB_ERRSPACE}};
  for (const auto& failing : kFailing) {
    if (failing.message == message && CallFails(failing.name)) return failing.failure;
  }
  return g_send_message(window, message, wparam, lparam);
}

}  // namespace

const Import* ImportTable(size_t* count) {
  static const Import imports[] = {
      FAILS(malloc, nullptr, TAKES(kBlocks)),
      FAILS(calloc, nullptr, TAKES(kBlocks)),
      FAILS(realloc, nullptr),
      GIVES(free, kBlocks),
      FAILS(SysAllocString, nullptr, TAKES(kTexts)),
      GIVES(SysFreeString, kTexts),
      FAILS(CreateFileW, INVALID_HANDLE_VALUE, TAKES(kHandles)),
      FAILS(CreateThread, nullptr, TAKES(kHandles)),
      FAILS(CreateEventW, nullptr, TAKES(kHandles)),
      GIVES(CloseHandle, kHandles),
      FAILS(FindFirstFileW, INVALID_HANDLE_VALUE, TAKES(kSearches)),
      FAILS(FindNextFileW, FALSE),
      GIVES(FindClose, kSearches),
      FAILS(ReadFile, FALSE),
      FAILS(WriteFile, FALSE),
      FAILS(FlushFileBuffers, FALSE),
      FAILS(SetFilePointer, INVALID_SET_FILE_POINTER),
      FAILS(GetFileSize, INVALID_FILE_SIZE),
      FAILS(GetFileAttributesW, INVALID_FILE_ATTRIBUTES),
      FAILS(SetFileAttributesW, FALSE),
      FAILS(DeleteFileW, FALSE),
      FAILS(MoveFileW, FALSE),
      FAILS(MoveFileExW, FALSE),
      FAILS(RegCreateKeyExW, kKeyError, TAKES(kKeys)),
      FAILS(RegOpenKeyExW, kKeyError, TAKES(kKeys)),
      FAILS(RegQueryValueExW, kKeyError),
      FAILS(RegSetValueExW, kKeyError),
      GIVES(RegCloseKey, kKeys),
      FAILS(FindResourceW, nullptr),
      FAILS(LoadResource, nullptr),
      FAILS(LockResource, nullptr),
      FAILS(SizeofResource, 0),
      FAILS(LoadLibraryW, nullptr, TAKES(kModules)),
      GIVES(FreeLibrary, kModules),
      FAILS(GetModuleHandleW, nullptr),
      FAILS(GetProcAddress, nullptr),
      FAILS(VirtualProtect, FALSE),
      FAILS(LoadStringW, 0),
      FAILS(LoadImageW, nullptr, TAKES(kIcons)),
      GIVES(DestroyIcon, kIcons),
      FAILS(LoadCursorW, nullptr),
      FAILS(GetCPInfo, FALSE),
      FAILS(MultiByteToWideChar, 0),
      FAILS(WideCharToMultiByte, 0),
      FAILS(CompareStringW, 0),
      FAILS(SetThreadPriority, FALSE),
      FAILS(TlsAlloc, TLS_OUT_OF_INDEXES, TAKES(kThreadSlots)),
      FAILS(TlsSetValue, FALSE),
      GIVES(TlsFree, kThreadSlots),
      Make<__LINE__>("InitializeCriticalSection", &::InitializeCriticalSection, {}, {kLocks, 1}),
      GIVES(DeleteCriticalSection, kLocks),
      FAILS(CoInitializeEx, E_OUTOFMEMORY, TAKES(kApartments)),
      GIVES(CoUninitialize, kApartments),
      FAILS(RegisterClassW, 0, TAKES(kClasses)),
      GIVES(UnregisterClassW, kClasses),
      FAILS(CreateWindowExW, nullptr),
      FAILS(CreatePopupMenu, nullptr, TAKES(kMenus)),
      FAILS(AppendMenuW, FALSE),
      FAILS(TrackPopupMenuEx, FALSE),
      GIVES(DestroyMenu, kMenus),
      FAILS(CreateFontIndirectW, nullptr, TAKES(kFonts)),
      GIVES(DeleteObject, kFonts),
      FAILS(ImageList_Create, nullptr, TAKES(kImageLists)),
      FAILS(ImageList_ReplaceIcon, -1),
      GIVES(ImageList_Destroy, kImageLists),
      FAILS(PropertySheetW, -1),
      FAILS(DialogBoxParamW, -1),
      FAILS(SHInitDialog, FALSE),
      FAILS(SHCreateMenuBar, FALSE),
      FAILS(SHFullScreen, FALSE),
      FAILS(SipShowIM, FALSE),
      FAILS(SetWindowTextW, FALSE),
      ONLY(GetTickCount),
      FAILS(SetTimer, 0),
      FAILS(MessageBoxW, 0),
      FAILS(PostMessageW, FALSE),
      {"SendMessageW", reinterpret_cast<void*>(&SendMessageOrFail),
       reinterpret_cast<void**>(&g_send_message)},
  };
  *count = sizeof(imports) / sizeof(imports[0]);
  return imports;
}

}  // namespace kelvo::test
