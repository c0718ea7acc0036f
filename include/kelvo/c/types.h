/* Types shared by all host-facing headers. Nothing here needs <windows.h>.
 *
 * Layout and calling convention. The library's objects are C++ objects whose first word points
 * to a table of operations; the host calls them by slot, as its compiler calls virtual
 * functions (on 32-bit x86: thiscall). Integers have the widths written here; on 64-bit builds
 * only what holds a pointer or a handle is wider.
 *
 * Generated from tools/contract/types.txt. */
#ifndef KELVO_C_TYPES_H
#define KELVO_C_TYPES_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

/* Plain functions use this convention whatever a compiler's default is. */
#if defined(_WIN32) && (defined(__i386__) || defined(_M_IX86))
#define KELVO_CDECL __cdecl
#else
#define KELVO_CDECL
#endif

/* How operations are called. On 32-bit x86 the object travels in ecx and the rest on the
 * stack, from where the callee removes it (thiscall). Most compilers have no word for that in
 * C, or warn at it; all have __fastcall, which differs in one thing, that the next word
 * travels in edx: an unused one goes there. Everywhere else an operation is a plain function
 * whose first argument is the object.
 *
 *   object->table->Open(KELVO_ON(object), path, 0);
 *   static int32_t KELVO_METHOD Close(KELVO_SELF(KelvoMediaReader)) { ... self ... } */
#ifdef __GNUC__
#define KELVO_UNUSED __attribute__((unused))
#else
#define KELVO_UNUSED
#endif
#if defined(_WIN32) && (defined(__i386__) || defined(_M_IX86))
#define KELVO_METHOD __fastcall
#define KELVO_SELF(type) type *self KELVO_UNUSED, int unused_edx KELVO_UNUSED
#define KELVO_ON(object) (object), 0
#else
#define KELVO_METHOD
#define KELVO_SELF(type) type* self KELVO_UNUSED
#define KELVO_ON(object) (object)
#endif

typedef void* KelvoWindowHandle; /* an HWND */
typedef void* KelvoModuleHandle; /* an HINSTANCE */

/* A word whose meaning is the host's; wide enough for a pointer. */
typedef uintptr_t KelvoHostWord;

/* Wide texts handed in and out (paths, titles) hold at most 259 characters and a terminator; a
 * buffer for one has this many characters. */
#define KELVO_MAX_TEXT 260

#endif
