#include "host/player/settings.h"

#include <stdio.h>

#include "host/input.h"
#include "host/system.h"
#include "host/text.h"

namespace velmora {
namespace {

constexpr size_t kMaxFileBytes = 32 * 1024 * 1024;

}  // namespace

std::wstring SessionPath() {
  return ProgramFolder() + L"\\velmora.session";
}

Session LoadSession(const std::wstring& path) {
  std::string text;
  if (FILE* file = _wfopen(path.c_str(), L"rb")) {
    char block[4096];
    while (const size_t bytes = fread(block, 1, sizeof(block), file)) {
      text.append(block, bytes);
      if (text.size() > kMaxFileBytes) break;
    }
    fclose(file);
  }
  return ParseSession(text);
}

bool SaveSession(const std::wstring& path, const Session& session) {
  const std::string text = PrintSession(session);
  const std::wstring fresh = path + L".new";
  FILE* const file = _wfopen(fresh.c_str(), L"wb");
  if (!file) return false;
  const bool written = fwrite(text.data(), 1, text.size(), file) == text.size();
  const bool closed = fclose(file) == 0;
  if (written && closed && MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
    return true;
  }
  DeleteFileW(fresh.c_str());
  return false;
}

void RestorePlayer(const Session& session, Player* player) {
  player->SetVolume(session.volume);
  player->SetBalance(session.balance);
  player->SetShuffle(session.shuffle);
  player->SetRepeat(session.repeat);
  player->SetEqualizer(session.equalizer);
  std::vector<std::wstring> paths;
  for (const std::string& track : session.tracks) {
    // A folder is not a track, and might be a whole disk to search.
    const std::wstring path = FromUtf8(track);
    if (Input::IsMedia(path)) paths.push_back(path);
  }
  player->Clear();
  player->Add(paths);
  player->Choose(session.current);
}

void KeepPlayer(const Player& player, Session* session) {
  const PlayerStatus status = player.status();
  session->volume = status.volume;
  session->balance = status.balance;
  session->shuffle = status.shuffle;
  session->repeat = status.repeat;
  session->equalizer = player.equalizer();
  session->tracks.clear();
  for (const Track& track : player.tracks()) session->tracks.push_back(ToUtf8(track.path));
  session->current = status.current != kNoTrack ? status.current : 0;
}

}  // namespace velmora
