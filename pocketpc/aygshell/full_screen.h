// For tests: what SHFullScreen was last told of a window, the bits of base/windows/pocketpc.h for
// the task bar and the input-panel button; 0 when it was told nothing.
#pragma once

#include <windows.h>

extern "C" DWORD WINAPI KelvoFullScreenState(HWND window);
