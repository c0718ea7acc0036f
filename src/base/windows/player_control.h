// The platform's media player control: identities, positions in its method table, and calls through
// the table. There is no declaration of the control to compile against, so the methods are named by
// their positions; stdcall on 32-bit desktops. The stand-in for the control is built from the same
// numbers.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <stdint.h>
#include <string.h>

namespace kelvo {

inline constexpr CLSID kPlayerClass = {
    0x22D6F312, 0xB0F6, 0x11D0, {0x94, 0xAB, 0x00, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};
inline constexpr wchar_t kPlayerClassText[] = L"{22D6F312-B0F6-11D0-94AB-0080C74C7E95}";
inline constexpr IID kPlayerInterface = {
    0x136B66EC, 0xF30D, 0x46A8, {0x88, 0xDD, 0xF2, 0xD0, 0x55, 0x16, 0x3E, 0x49}};
inline constexpr IID kPlayerEventInterface = {
    0xE17A7C5E, 0xCB17, 0x4379, {0xA4, 0x87, 0xC8, 0xAB, 0xC7, 0x6A, 0x65, 0x41}};

// Positions count from 0 and include IUnknown (0 to 2) and IDispatch (3 to 6).
enum PlayerMethod : int {
  kPlayerGetPosition = 59,  // seconds
  kPlayerPutPosition = 60,  // seconds
  kPlayerGetDuration = 63,  // seconds
  kPlayerOpen = 119,
  kPlayerPlay = 121,
  kPlayerStop = 123,
};
// The methods that take one 32-bit number; what each means is the control's affair.
inline constexpr int kPlayerSettings[] = {24, 26, 28, 30, 32, 34, 36, 38, 96};

// Numbers of the control's events. Four of them say that playing is over; the stand-in uses 4 at
// the end of a file and 6 after an error.
enum PlayerEvent : DISPID {
  kPlayerEndEvent = 4,
  kPlayerErrorEvent = 6,
  kPlayerOverEvent7 = 7,
  kPlayerChangeEvent = 17,  // playing or stopped; nothing to do
  kPlayerOverEvent21 = 21,
};

// The control's module, and an export that lies before the slots of its imports.
inline constexpr wchar_t kPlayerModule[] = L"WMPCmn.dll";
inline constexpr char kPlayerAnchorExport[] = "?AllocationError@@YAHI@Z";

template <class Function>
Function PlayerFunction(IUnknown* control, int position) noexcept {
  void* const* table = *reinterpret_cast<void* const* const*>(control);
  Function function;
  static_assert(sizeof(function) == sizeof(*table));
  memcpy(&function, table + position, sizeof(function));
  return function;
}

// `control` is the pointer that kPlayerInterface gave. All results are the control's own.
inline HRESULT PlayerPutSetting(IUnknown* control, int setting, int32_t value) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, int32_t);
  return PlayerFunction<Function>(control, setting)(control, value);
}

inline HRESULT PlayerGetSeconds(IUnknown* control, PlayerMethod which, double* seconds) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, double*);
  return PlayerFunction<Function>(control, which)(control, seconds);
}

#ifdef KELVO_CE_ARM
// The device passes a double in the next two registers; our compiler would skip one to start at an
// even register. Two words, low first, go where the control expects them.
inline HRESULT PlayerPutPositionSeconds(IUnknown* control, double seconds) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, uint32_t, uint32_t);
  uint64_t bits;
  memcpy(&bits, &seconds, sizeof(bits));
  return PlayerFunction<Function>(control, kPlayerPutPosition)(control, static_cast<uint32_t>(bits),
                                                               static_cast<uint32_t>(bits >> 32));
}
#else
inline HRESULT PlayerPutPositionSeconds(IUnknown* control, double seconds) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, double);
  return PlayerFunction<Function>(control, kPlayerPutPosition)(control, seconds);
}
#endif

// `file` is an automation text (SysAllocString); it stays the caller's.
inline HRESULT PlayerOpenFile(IUnknown* control, BSTR file) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, BSTR);
  return PlayerFunction<Function>(control, kPlayerOpen)(control, file);
}

// kPlayerPlay or kPlayerStop.
inline HRESULT PlayerCommand(IUnknown* control, PlayerMethod command) noexcept {
  using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*);
  return PlayerFunction<Function>(control, command)(control);
}

}  // namespace kelvo
