#pragma once

#include <string>

namespace velmora {

// The folder of this program, without a backslash at its end.
std::wstring ProgramFolder();

}  // namespace velmora
