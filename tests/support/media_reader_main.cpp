// The main function of programs in which the system's media reader has worked. Wine's reader
// crashes now and then while its process exits. So these programs do not exit: they unload the
// library, whose own end is thereby part of the test, and then end at once, with the tests' result.
#include <gtest/gtest.h>
#include <windows.h>

#include <stdio.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  while (const HMODULE library = GetModuleHandleW(L"Kelvo.dll")) {
    if (!FreeLibrary(library)) break;
  }
  fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(result));
}
