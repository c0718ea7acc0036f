// The device library's resources, as this process's functions find them.
#pragma once

#include <windows.h>

#include "arm_image.h"

namespace bridge {

// From now on every function that takes a module finds, for the bridge's, the resources of the
// device's file. Before the image is protected.
void ShowResources(HMODULE bridge, const ArmImage& image);

}  // namespace bridge
