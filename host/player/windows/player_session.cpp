// What the player keeps from one run to the next.
#include "host/one_instance.h"
#include "host/player/settings.h"
#include "host/player/windows/player_app.h"
#include "host/system.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr Point kFirstPlace = {100, 100};

void Restore(const WindowPlace& place, SkinWindow* window) {
  if (place.width > 0) window->MoveTo({place.x, place.y});
}

WindowPlace Kept(const SkinWindow& window) {
  const Rect place = window.place();
  return {window.visible(), place.x, place.y, place.width, place.height};
}

}  // namespace

void PlayerApp::RestoreWindows(const Session& session) {
  const bool first_start = session.main_window.width == 0;
  scale_ = session.double_size ? 2 : 1;
  main_.UpdateSize();
  equalizer_.UpdateSize();
  playlist_.SetSize({session.playlist_window.width, session.playlist_window.height});
  if (first_start) {
    main_.MoveTo(kFirstPlace);
    windows_.Stack();
  } else {
    Restore(session.main_window, &main_);
    Restore(session.equalizer_window, &equalizer_);
    Restore(session.playlist_window, &playlist_);
  }
  windows_.BringIntoView();
  if (first_start || session.equalizer_window.open) equalizer_.Show(true);
  if (first_start || session.playlist_window.open) playlist_.Show(true);
  main_.Show(true);  // last: a window manager gives the keyboard to the newest
  SetActiveWindow(main_.handle());
  SetForegroundWindow(main_.handle());
}

void PlayerApp::KeepWindows(Session* session) const {
  session->skin = ToUtf8(skin_path_);
  session->double_size = scale_ == 2;
  session->remaining_time = main_.remaining_time();
  session->visual = static_cast<int>(main_.visual_mode());
  session->main_window = Kept(main_);
  session->equalizer_window = Kept(equalizer_);
  session->playlist_window = Kept(playlist_);
  session->playlist_window.width = playlist_.size().width;  // not enlarged, not rolled up
  session->playlist_window.height = playlist_.size().height;
}

bool PlayerApp::OpenWindows() {
  const Session session = LoadSession(options_.session);
  UseTexts(ChosenLanguage());
  if (!main_.Create()) return false;
  equalizer_.Create(main_.handle());
  playlist_.Create(main_.handle());
  windows_.Add(&main_);
  windows_.Add(&equalizer_);
  windows_.Add(&playlist_);
  player_.emplace(library_, main_.handle());
  adding_.emplace(*player_);
  bookmarks_.emplace(library_, *player_);
  catalog_.emplace(library_, *player_, options_.device);
  RestorePlayer(session, &*player_);
  if (!session.skin.empty()) UseSkin(FromUtf8(session.skin));
  main_.SetVisualMode(static_cast<VisualMode>(session.visual));
  main_.SetRemainingTime(session.remaining_time);
  RestoreWindows(session);
  OneInstance::Mark(main_.handle(), options_.session);
  return true;
}

void PlayerApp::Start() {
  if (player_->silent()) player_->AddNotice(Text(TEXT_NOTICE_NO_SOUND));
  if (options_.files.empty()) {
    bookmarks_->ResumePlace();
  } else {
    Open(options_.files, true);
  }
  Refresh();
}

std::wstring PlayerApp::Keep() {
  ShowWindow(main_.handle(), SW_RESTORE);  // minimised windows are nowhere
  Session session;
  KeepPlayer(*player_, &session);
  KeepWindows(&session);
  const std::wstring why = SaveSession(options_.session, session) ? L"" : SystemReason();
  bookmarks_->SavePlace();
  return why;
}

}  // namespace velmora
