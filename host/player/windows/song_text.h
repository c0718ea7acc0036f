#pragma once

#include <string>

#include "host/player/skin/skin.h"

namespace velmora {

// The song's text as a picture of one line for the main window: in the skin's letters, or in the
// system's when the skin lacks some. Text that is too wide for its place gets a gap behind it, so
// that it can scroll round.
Bitmap SongTextPicture(const Skin& skin, const std::wstring& text);

}  // namespace velmora
