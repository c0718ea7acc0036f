// Skins through the library's feature 5.
#pragma once

#include <string>
#include <vector>

#include "host/library.h"
#include "host/player/skin/skin.h"

namespace velmora {

// The skin at the path, a folder or a zip archive, over `base`. False when there is none.
bool ReadSkin(const Library& library, const std::wstring& path, const Skin& base, Skin* skin);

// Whether a dropped file or folder is a skin rather than music.
bool LooksLikeSkin(const Library& library, const std::wstring& path);

// The folder of skins beside this program, and what is in it besides the default: paths of folders
// and archives.
std::wstring SkinFolder();
std::vector<std::wstring> FindSkins();

// The skin that the program brings; empty without it.
Skin DefaultSkin(const Library& library);

}  // namespace velmora
