#include "host/library.h"
#include "host/player/settings.h"
#include "host/player/windows/player_app.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

constexpr DWORD kSomeMusicMs = 2500;  // until the spectrum and the time show something
constexpr DWORD kWindowsMoveMs = 500;

void Do(User& user, int command) {
  PostMessageW(user.Dialog(), WM_COMMAND, static_cast<WPARAM>(command), 0);
  SendMessageW(user.Dialog(), WM_NULL, 0, 0);
}

void Listen(User&) {
  Sleep(kSomeMusicMs);
}

void OpenMenu(User& user) {
  user.OpenContextMenu(user.Dialog(), {200, 30});
}

void CloseMenu(User& user) {
  user.LeaveMenu();
}

void OpenAbout(User& user) {
  user.OpenByCommand(velmora::kCommandAbout);
}

void CloseAbout(User& user) {
  user.CloseBy(IDOK);
}

HWND Playlist() {
  return FindWindowW(L"VelmoraPlaylist", nullptr);
}

void OpenEntryMenu(User& user) {
  user.OpenContextMenu(Playlist(), {60, 39});
}

// Of the track that the menu was opened on.
void OpenInfo(User& user) {
  user.OpenByCommand(velmora::kCommandEntryInfo);
}

void OpenJump(User& user) {
  user.OpenByCommand(velmora::kCommandJump);
}

void OpenPresetName(User& user) {
  user.OpenByCommand(velmora::kCommandPresetSave);
}

void CloseDialog(User& user) {
  user.CloseBy(IDCANCEL);
}

void DoubleSize(User& user) {
  Do(user, velmora::kCommandDoubleSize);
  Do(user, velmora::kCommandPlay);
  Sleep(kSomeMusicMs);
}

void RollUp(User& user) {
  Do(user, velmora::kCommandDoubleSize);
  Do(user, velmora::kCommandShade);
  Do(user, velmora::kCommandVisualWave);
  Sleep(kWindowsMoveMs);
}

constexpr Shot kShots[] = {
    {L"player", Listen, nullptr},
    {L"player-menu", OpenMenu, CloseMenu},
    {L"player-entry-menu", OpenEntryMenu, CloseMenu},
    {L"player-info", OpenInfo, CloseDialog},
    {L"player-jump", OpenJump, CloseDialog},
    {L"player-preset-name", OpenPresetName, CloseDialog},
    {L"player-about", OpenAbout, CloseAbout},
    {L"player-double", DoubleSize, nullptr},
    {L"player-rolled-up", RollUp, nullptr},
};

// A setting that is seen in the sliders, the curve and the switches.
void KeepSomeSetting(const std::wstring& path) {
  velmora::Session session;
  session.equalizer = {true, 12, {8, 7, 9, 12, 15, 16, 14, 11, 9, 8}, 1};
  session.volume = 80;
  session.repeat = true;
  velmora::SaveSession(path, session);
}

void Open(Studio& session) {
  const std::wstring kept = session.device() + L"\\velmora.session";
  KeepSomeSetting(kept);
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", L"silence");
  const velmora::Library library;
  velmora::PlayerApp player(
      library, {{session.device() + L"\\Music\\Ring Buffers", L"gone.ogg", session.device()},
                session.device(),
                kept});
  player.Run();
}

void Close(User& user) {
  Do(user, velmora::kCommandStop);
  PostMessageW(user.Dialog(), WM_CLOSE, 0, 0);
}

}  // namespace

const Group kPlayerGroup = MakeGroup(Open, kShots, Close);

}  // namespace screenshots
