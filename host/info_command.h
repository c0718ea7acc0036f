#pragma once

#include <string>
#include <vector>

#include "host/library.h"

namespace velmora {

// Prints what the files say about themselves, without playing them. The program's exit code: 0 when
// all could be read, else 1.
int ShowInfo(const Library& library, const std::vector<std::wstring>& files);

}  // namespace velmora
