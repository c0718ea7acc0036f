#pragma once

#include <string>

#include "host/library.h"

namespace velmora {

// Remembers, as the last-played bookmark, where playback of a file was interrupted.
void StoreLastPlayed(const Library& library, const std::wstring& path, int position_ms,
                     const wchar_t* title);

}  // namespace velmora
