#pragma once

#include <stdint.h>

namespace kelvo {

// 3 for names that end in ".m3u" or ".pls", else -1: the playlists that the save dialog lists.
int32_t PlaylistExtension(const wchar_t* path) noexcept;

}  // namespace kelvo
