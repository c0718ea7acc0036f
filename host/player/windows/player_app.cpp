#include "host/player/windows/player_app.h"

#include <kelvo/messages.h>

#include "host/player/settings.h"
#include "host/player/windows/choices.h"
#include "host/player/windows/commands.h"
#include "host/system.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr UINT_PTR kTickTimer = 1;
constexpr UINT kTickMs = 50;
constexpr UINT_PTR kDialogTimer = 3;
constexpr UINT kDialogMs = 250;
constexpr int kListFontHeight = 11;

std::wstring FromAnsi(const std::string& text) {
  return std::wstring(text.begin(), text.end());  // font names are plain
}

}  // namespace

PlayerApp::PlayerApp(const Library& library, const PlayerOptions& options)
    : library_(library),
      options_(options),
      presets_(library, ProgramFolder()),
      default_skin_(DefaultSkin(library)) {
  UseSkin(L"");
}

int PlayerApp::Run() {
  if (!OpenWindows()) return 1;
  Start();
  Loop();
  const std::wstring why = Keep();
  player_->Stop();
  if (!why.empty()) {
    ShowMessage(main_.handle(), Text(TEXT_NOTICE_NOT_KEPT, {why}), L"Velmora",
                MB_OK | MB_ICONWARNING);
  }
  return 0;
}

void PlayerApp::Loop() {
  const HACCEL shortcuts = CreateShortcuts();
  bool learning = true;
  while (!leaving_) {
    MSG message;
    if (learning && !PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
      learning = GoOnAdding() || player_->LearnNext();
      if (learning) Refresh();
      continue;
    }
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) break;
    if (!TranslateAcceleratorW(main_.handle(), shortcuts, &message)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    learning = true;  // whatever it was, it may have added files
  }
  DestroyAcceleratorTable(shortcuts);
}

std::wstring PlayerApp::SongText() const {
  const PlayerStatus status = player_->status();
  if (status.current == kNoTrack) return status.title;  // it plays on, though taken off the list
  const Track& track = player_->tracks()[status.current];
  const std::wstring title = status.title.empty() ? track.title : status.title;
  std::wstring text = std::to_wstring(status.current + 1) + L". " + title;
  if (track.length_ms > 0) {
    text += std::wstring(L" (") + MinutesSeconds(track.length_ms).text + L")";
  }
  return text;
}

void PlayerApp::ShowNotice() {
  const std::wstring notice = player_->TakeNotice();
  if (!notice.empty()) ShowHint(notice);
}

void PlayerApp::Refresh() {
  ShowNotice();
  UpdateTimer();
  main_.ShowTitle();
  main_.Refresh();
  equalizer_.Refresh();
  playlist_.Tick();
  playlist_.Refresh();
}

// While nothing plays, nothing moves.
void PlayerApp::UpdateTimer() {
  const PlayState state = player_->status().state;
  const bool playing = state == PlayState::kPlaying;
  if (playing && !ticking_) SetTimer(main_.handle(), kTickTimer, kTickMs, nullptr);
  if (!playing && ticking_) KillTimer(main_.handle(), kTickTimer);
  ticking_ = playing;
  if (state == PlayState::kStopped) main_.Rest();
}

bool PlayerApp::OnTimer(UINT_PTR timer) {
  if (timer != kTickTimer && timer != kDialogTimer) return false;
  ShowNotice();  // the catalog's sheet may have added something
  if (timer == kTickTimer) {
    main_.Tick(kTickMs);
    equalizer_.Tick(player_->TakeClipped(), kTickMs);
  }
  playlist_.Tick();
  UpdateTimer();
  return true;
}

// A dialog keeps the user from the main window: the others wait too. It may add to the list.
void PlayerApp::OnDialog(bool open) {
  windows_.Enable(!open);
  if (open) {
    SetTimer(main_.handle(), kDialogTimer, kDialogMs, nullptr);
  } else {
    KillTimer(main_.handle(), kDialogTimer);
  }
}

bool PlayerApp::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      Do(LOWORD(wparam));
      return true;
    case WM_TIMER:
      return OnTimer(wparam);
    case kelvo::kMessageEndOfPlayback:
      player_->OnEndOfPlayback();
      break;
    case kelvo::kMessagePlayBookmark:
      bookmarks_->OnPlayBookmark(wparam, lparam);
      break;
    case kelvo::kMessageCatalogPlay:
      catalog_->OnPlay();
      break;
    case kelvo::kMessageCatalogPlayed:
      break;  // nothing is left to do
    case WM_ENABLE:
      OnDialog(wparam == FALSE);
      return true;
    case WM_ENDSESSION:
      if (wparam) Keep();
      break;
    default:
      return false;
  }
  Refresh();
  return true;
}

void PlayerApp::OnDropped(const std::vector<std::wstring>& paths, bool replace) {
  std::vector<std::wstring> media;
  for (const std::wstring& path : paths) {
    if (!LooksLikeSkin(library_, path) || !UseSkin(path)) media.push_back(path);
  }
  Open(media, replace);
  Refresh();
}

bool PlayerApp::UseSkin(const std::wstring& path) {
  Skin skin = default_skin_;
  if (!path.empty() && !ReadSkin(library_, path, default_skin_, &skin)) return false;
  skin_ = std::move(skin);
  skin_path_ = path;
  list_text_ = std::make_unique<GdiText>(FromAnsi(skin_.playlist.font), kListFontHeight);
  main_.ForgetPictures();
  return true;
}

void PlayerApp::SetScale(int scale) {
  windows_.KeepTogether([&] {
    scale_ = scale;
    main_.UpdateSize();
    equalizer_.UpdateSize();
    playlist_.UpdateSize();
  });
}

void PlayerApp::Toggle(SkinWindow& window) {
  window.Show(!window.visible());
  Refresh();
}

void PlayerApp::About() {
  const auto* text = library_.Get<const wchar_t>(kelvo::kFeatureVersionText);
  std::wstring lines = text ? text : L"";
  for (wchar_t& c : lines) {
    if (c == L'\r') c = L'\n';
  }
  ShowMessage(main_.handle(), lines, Text(TEXT_CAPTION_ABOUT), MB_OK | MB_ICONINFORMATION);
}

}  // namespace velmora
