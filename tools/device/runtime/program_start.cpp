// The entry point of a program: what the loader calls with the arguments of the main function. Its
// return ends the process. A program has no objects that are constructed at load.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE module, HINSTANCE previous, LPWSTR arguments, int show);

extern "C" {

extern void (*kelvo_constructors_begin[])();
extern void (*kelvo_constructors_end[])();

int WINAPI KelvoProgramEntry(HINSTANCE module, HINSTANCE previous, LPWSTR arguments, int show) {
  if (+kelvo_constructors_begin != +kelvo_constructors_end) return -1;
  return wWinMain(module, previous, arguments, show);
}
}
