// Text to the console (or, as UTF-8, to wherever standard output goes), and Ctrl-C.
#pragma once

#include <windows.h>

namespace velmora {

// printf-style, wide format.
void Print(const wchar_t* format, ...);
void PrintError(const wchar_t* format, ...);

// An event that Ctrl-C, Ctrl-Break or closing the console signals.
HANDLE InterruptEvent();
bool Interrupted();

}  // namespace velmora
