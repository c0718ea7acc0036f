// Text to the console (or, as UTF-8, to wherever standard output goes), and Ctrl-C.
#pragma once

#include <stdint.h>
#include <windows.h>

namespace velmora {

// printf-style, wide format.
void Print(const wchar_t* format, ...);
void PrintError(const wchar_t* format, ...);

// "3:07"
struct MinutesSeconds {
  wchar_t text[24];
  explicit MinutesSeconds(int64_t milliseconds);
};

// An event that Ctrl-C, Ctrl-Break or closing the console signals.
HANDLE InterruptEvent();
bool Interrupted();

}  // namespace velmora
