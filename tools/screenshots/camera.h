#pragma once

#include <windows.h>

#include <vector>

#include "tools/screenshots/png_file.h"

namespace screenshots {

// These parts of the screen, as soon as they stand still; between them there is plain grey.
Picture Photograph(const std::vector<RECT>& parts);

}  // namespace screenshots
