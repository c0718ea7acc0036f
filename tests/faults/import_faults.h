// Lets calls fail that Kelvo.dll makes of the system and of the C library: memory, files, the
// registry, resources, windows, threads. Its import table is changed for that, for as long as it is
// loaded. Counts the library's blocks of memory besides.
#pragma once

#include <windows.h>

#include <string>

namespace kelvo::test {

class ImportFaults {
 public:
  // Files below the root of the device are looked for in `root`.
  ImportFaults(HMODULE library, const std::wstring& root);
  ImportFaults(const ImportFaults&) = delete;
  ImportFaults& operator=(const ImportFaults&) = delete;

  // The call after so many fails, once. Calls of all threads count.
  void Arm(long successes);
  // The function that has failed since; null: it did not come to that.
  const char* Disarm();

  // That the library has allocated since and nobody has freed.
  long blocks() const;
  static void Free(void* block);  // one that the library has handed out
};

}  // namespace kelvo::test
