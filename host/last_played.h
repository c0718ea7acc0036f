#pragma once

#include <string>

#include "host/library.h"

namespace velmora {

// Remembers, as the last-played bookmark, where playback of a file was interrupted.
void StoreLastPlayed(const Library& library, const std::wstring& path, int position_ms,
                     const wchar_t* title);

// Takes it out again; false, and nothing is written, when there is none or its file is gone.
bool TakeLastPlayed(const Library& library, std::wstring* path, int* position_s);

}  // namespace velmora
