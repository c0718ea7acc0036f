// Types shared by all host-facing headers. Nothing here needs <windows.h>.
//
// Layout and calling convention. The library's objects are C++ objects whose first word points to a
// table of operations; the host calls them by slot, as its compiler calls virtual functions (on
// 32-bit x86: thiscall). Integers have the widths written here; on 64-bit builds only what holds a
// pointer or a handle is wider.
//
// Generated from tools/contract/types.txt.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

// Plain functions use this convention whatever a compiler's default is.
#if defined(_WIN32) && (defined(__i386__) || defined(_M_IX86))
#define KELVO_CDECL __cdecl
#else
#define KELVO_CDECL
#endif

namespace kelvo {

static_assert(sizeof(wchar_t) == 2, "texts are UTF-16");

using WindowHandle = void*;  // an HWND
using ModuleHandle = void*;  // an HINSTANCE

// A word whose meaning is the host's; wide enough for a pointer.
using HostWord = uintptr_t;

// Wide texts handed in and out (paths, titles) hold at most 259 characters and a terminator; a
// buffer for one has this many characters.
constexpr size_t kMaxText = 260;

}  // namespace kelvo
