#pragma once

#include <windows.h>

#include "tools/screenshots/png_file.h"

namespace screenshots {

// The part of the screen, as soon as it stands still.
Picture Photograph(const RECT& part);

}  // namespace screenshots
