// The device's library and all that the bridge holds for it, from attach to detach.
#pragma once

#include <windows.h>

#include <stdint.h>

#include "arm_image.h"
#include "imports.h"
#include "stubs.h"

namespace bridge {

class Library {
 public:
  // Loads the file beside the bridge, NAME_arm.dll for NAME.dll, and binds it.
  explicit Library(HMODULE bridge);

  void* GetFeature(int32_t id);
  // True when the target is an operation of a host's object, which takes that object in a register:
  // the output and the reader that the host gave the Ogg Vorbis plug-in. Every other object of this
  // machine that the device's code calls is a component's.
  bool IsHostMethod(uint32_t target, uint32_t object) const;

  ArmImage image;
  Stubs stubs;
  Imports imports;

 private:
  const uint32_t* ogg_vorbis_ = nullptr;
};

extern Library* g_library;

}  // namespace bridge
