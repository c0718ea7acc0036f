// What is kept and found beside the program: the session, languages, skins.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/player/player.h"
#include "host/player/session.h"
#include "host/player/skin/skin.h"

namespace velmora {

// "velmora.session" in the program's folder.
std::wstring SessionPath();

// Without a readable file: the session of a first start.
Session LoadSession(const std::wstring& path);
// Replaces the file as a whole; false, and the old one stays, when it cannot be written.
bool SaveSession(const std::wstring& path, const Session& session);

// The player's part of a session. Restoring plays nothing.
void RestorePlayer(const Session& session, Player* player);
void KeepPlayer(const Player& player, Session* session);

constexpr LANGID kEnglish = 1033;  // built into the library

// English, and the languages whose libraries lie beside the program and which the system can name,
// by their numbers.
std::vector<LANGID> FindLanguages();

// The user's choice; English when there is none.
LANGID ChosenLanguage();
// Stores the choice and switches the library to it; false when it cannot be stored.
bool ChooseLanguage(const Library& library, LANGID language);

// Whether any font of the system has the letters of a language.
bool HasLettersOf(LANGID language);

// Skins through the library's feature 5.

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
