// Functions that the desktop exports and that the device's own headers define in terms of others.
#include <windows.h>

extern "C" {

// coredll.dll
BOOL EventModify(HANDLE event, DWORD operation);
DWORD TlsCall(DWORD operation, DWORD slot);

constexpr DWORD kEventReset = 2;
constexpr DWORD kEventSet = 3;
constexpr DWORD kTlsAlloc = 0;
constexpr DWORD kTlsFree = 1;

BOOL WINAPI SetEvent(HANDLE event) {
  return EventModify(event, kEventSet);
}
BOOL WINAPI ResetEvent(HANDLE event) {
  return EventModify(event, kEventReset);
}

DWORD WINAPI TlsAlloc() {
  return TlsCall(kTlsAlloc, 0);
}
BOOL WINAPI TlsFree(DWORD slot) {
  return TlsCall(kTlsFree, slot) != 0;
}

// The device's wants wide names. Ordinals, numbers below 64 K in the name's place, pass as they
// are.
FARPROC GetProcAddressW(HMODULE module, LPCWSTR name);

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
  if (reinterpret_cast<UINT_PTR>(name) <= 0xFFFF) {
    return GetProcAddressW(module, reinterpret_cast<LPCWSTR>(name));
  }
  constexpr int kCapacity = 128;
  wchar_t wide[kCapacity];
  int length = 0;
  while (name[length] != 0) {
    if (length == kCapacity - 1) return nullptr;
    wide[length] = static_cast<unsigned char>(name[length]);
    ++length;
  }
  wide[length] = 0;
  return GetProcAddressW(module, wide);
}

// Loaded resources are mapped: the handle is the address.
LPVOID WINAPI LockResource(HGLOBAL resource) {
  return resource;
}

INT_PTR WINAPI DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter) {
  const HRSRC found = FindResourceW(module, name, reinterpret_cast<LPCWSTR>(RT_DIALOG));
  const HGLOBAL dialog = found ? LoadResource(module, found) : nullptr;
  if (!dialog) return -1;
  return DialogBoxIndirectParamW(module, static_cast<LPCDLGTEMPLATEW>(dialog), parent, procedure,
                                 parameter);
}

HWND WINAPI CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter) {
  const HRSRC found = FindResourceW(module, name, reinterpret_cast<LPCWSTR>(RT_DIALOG));
  const HGLOBAL dialog = found ? LoadResource(module, found) : nullptr;
  if (!dialog) return nullptr;
  return CreateDialogIndirectParamW(module, static_cast<LPCDLGTEMPLATEW>(dialog), parent, procedure,
                                    parameter);
}
}
