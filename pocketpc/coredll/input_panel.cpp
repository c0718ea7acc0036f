// The software input panel. A desktop has a keyboard: what is asked for is only remembered.
#include <windows.h>

namespace {

LONG g_shown = 0;

}  // namespace

extern "C" {

BOOL WINAPI SipShowIM(DWORD flag) {
  InterlockedExchange(&g_shown, flag == 1);
  return TRUE;
}

// For tests: whether the panel is up.
BOOL WINAPI KelvoInputPanelState() {
  return g_shown != 0;
}

}  // extern "C"
