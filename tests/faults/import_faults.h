// Lets calls fail that Kelvo.dll makes of the system and of the C library: memory, files, the
// registry, resources, windows, threads. Its import table is changed for that, for as long as it is
// loaded. Counts besides what the library takes and gives back.
#pragma once

#include <windows.h>

#include <string>

namespace kelvo::test {

class ImportFaults {
 public:
  // Of Kelvo.dll as it is, and each time that it is loaded, before it is entered. Files below the
  // root of the device are looked for in `root`. Timers come at once, everything takes 100 ms,
  // message boxes are answered with Yes or OK, and popup menus with nothing.
  explicit ImportFaults(const std::wstring& root);
  ~ImportFaults();
  ImportFaults(const ImportFaults&) = delete;
  ImportFaults& operator=(const ImportFaults&) = delete;

  // The call after so many fails, once. Calls of all threads count.
  void Arm(long successes);
  // The function that has failed since; null: it did not come to that.
  const char* Disarm();

  // What the library has taken since and not given back: "blocks 2, keys 1".
  std::string Held() const;
  long blocks() const;            // of memory alone
  static void Free(void* block);  // one that the library has handed out

 private:
  void* cookie_ = nullptr;  // of the loader
};

}  // namespace kelvo::test
