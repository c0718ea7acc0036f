#pragma once

#include <string>

namespace velmora {

// The path from the root of its drive, as programs with another current folder need it; empty for
// one that is longer than plug-ins take.
std::wstring FullPath(const std::wstring& path);

}  // namespace velmora
