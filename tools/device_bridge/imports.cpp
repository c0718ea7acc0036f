#include "imports.h"

#include <string.h>

#include "device_functions.h"
#include "faults.h"
#include "functions.h"

namespace bridge {
namespace {

// Where this machine has what the device has in one library. The stand-in comes first.
const struct {
  const char* library;
  const char* here[8];
} kPlaces[] = {
    {"coredll.dll",
     {"coredll.dll", "kernel32.dll", "user32.dll", "gdi32.dll", "advapi32.dll", "msvcrt.dll"}},
    {"commctrl.dll", {"comctl32.dll"}},
};

bool DeviceHas(const char* name) {
  for (int i = 0; i < kDeviceHasCount; ++i) {
    if (strcmp(kDeviceHas[i], name) == 0) return true;
  }
  return false;
}

}  // namespace

Imports::~Imports() {
  for (const auto& module : modules_) FreeLibrary(module.second);
}

uint32_t Imports::Find(const char* file, const char* name) {
  auto found = modules_.find(file);
  if (found == modules_.end()) {
    const HMODULE module = LoadLibraryA(file);
    if (!module) return 0;
    found = modules_.emplace(file, module).first;
  }
  return reinterpret_cast<uint32_t>(GetProcAddress(found->second, name));
}

uint32_t Imports::Resolve(const char* library, const char* name) {
  if (!DeviceHas(name)) Fail("the device has no %s", name);
  uint32_t address = DeviceFunction(name);
  bool placed = false;
  for (const auto& place : kPlaces) {
    if (strcmp(place.library, library) != 0) continue;
    placed = true;
    for (const char* const* file = place.here; *file && address == 0; ++file)
      address = Find(*file, name);
  }
  if (!placed && address == 0) address = Find(library, name);
  if (address == 0) Fail("nobody here has %s", name);
  WatchRecords(address, name);
  return address;
}

}  // namespace bridge
