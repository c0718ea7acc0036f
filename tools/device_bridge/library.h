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
  // True when the target is an operation of this machine that takes its object in a register: one
  // of the output or the reader that the host gave the Ogg Vorbis plug-in, or one that the host put
  // into a feature's own table. Every other object that the device's code calls here is a
  // component's.
  bool IsHostMethod(uint32_t target, uint32_t object) const;

  ArmImage image;
  Stubs stubs;
  Imports imports;

 private:
  static constexpr int kIds = 22;

  uint32_t features_[kIds] = {};  // the objects that the host has, by their ids
};

extern Library* g_library;

}  // namespace bridge
