#pragma once

#include <string>

#include "host/player/player.h"
#include "host/player/session.h"

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

}  // namespace velmora
