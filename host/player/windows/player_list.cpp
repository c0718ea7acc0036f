// What the user does with the list: fill it, save it, order it, find in it.
#include "host/one_instance.h"
#include "host/player/list_order.h"
#include "host/player/playlist_files.h"
#include "host/player/windows/choices.h"
#include "host/player/windows/player_app.h"
#include "host/system.h"
#include "host/text.h"
#include "host/texts.h"

namespace velmora {
namespace {

// The name first: a folder of one album after the other is sorted by what the user sees.
std::wstring KeyOf(const Track& track, int command) {
  if (command == kCommandSortTitle) return track.title;
  if (command == kCommandSortPath) return track.path;
  return track.path.substr(track.path.find_last_of(L'\\') + 1);
}

}  // namespace

void PlayerApp::Open(const std::vector<std::wstring>& paths, bool replace) {
  if (paths.empty()) return;
  adding_->Start(paths, replace);
  GoOnAdding();
  Refresh();
}

// A dialog that is open is to be answered first: the files go in once the loop has time again.
LRESULT PlayerApp::OnHandedOver(const COPYDATASTRUCT& data) {
  Request request;
  if (leaving_ || !OneInstance::Read(data, &request)) return 0;
  if (!request.files.empty()) adding_->Start(request.files, true);
  const std::wstring own = FullPath(options_.device);
  const bool other = !request.device.empty() && lstrcmpiW(request.device.c_str(), own.c_str()) != 0;
  if (other) ShowHint(Text(TEXT_HINT_OTHER_DEVICE));
  if (IsIconic(main_.handle())) ShowWindow(main_.handle(), SW_RESTORE);
  SetForegroundWindow(GetLastActivePopup(main_.handle()));
  PostMessageW(main_.handle(), WM_NULL, 0, 0);  // wakes the loop
  return OneInstance::Result(other);
}

bool PlayerApp::GoOnAdding() {
  if (!adding_->active()) return false;
  const bool more = adding_->Step();
  if (adding_->replaced()) PlayTrack(0);
  const std::wstring added = std::to_wstring(adding_->added());
  if (more) {
    ShowHint(Text(TEXT_HINT_ADDING, {added}));
  } else if (adding_->full()) {
    ShowHint(Text(TEXT_HINT_LIST_FULL, {std::to_wstring(player_->tracks().size())}));
  } else if (adding_->left_out() > 0) {
    ShowHint(Text(TEXT_HINT_LEFT_OUT, {std::to_wstring(adding_->left_out())}));
  } else if (adding_->added() == 0) {
    ShowHint(Text(TEXT_HINT_NO_MUSIC));
  } else if (!adding_->at_once()) {
    ShowHint(Text(TEXT_HINT_ADDED, {added}));
  }
  return true;
}

void PlayerApp::StopAdding() {
  if (!adding_->active()) return;
  adding_->Stop();
  ShowHint(Text(TEXT_HINT_ADDED, {std::to_wstring(adding_->added())}));
}

void PlayerApp::SaveList() {
  const std::wstring path = AskWhereToSaveList(main_.handle());
  if (path.empty()) return;
  SetLastError(ERROR_ACCESS_DENIED);  // so it is where nothing is tried: over a read-only file
  const WrittenPlaylist result = WritePlaylist(path, player_->tracks());
  if (!result.written) {
    ShowHint(Text(TEXT_HINT_NOT_SAVED) + L": " + SystemReason());
  } else if (result.lost_names > 0) {
    ShowHint(Text(TEXT_HINT_NAMES_LOST, {std::to_wstring(result.lost_names)}));
  } else {
    ShowHint(Text(TEXT_HINT_SAVED));
  }
}

void PlayerApp::Arrange(const std::vector<size_t>& order) {
  if (player_->Arrange(order)) playlist_.OnArranged(order);
}

bool PlayerApp::DoArrange(int command) {
  const std::vector<Track>& tracks = player_->tracks();
  switch (command) {
    case kCommandSortTitle:
    case kCommandSortName:
    case kCommandSortPath: {
      Texts keys;
      for (const Track& track : tracks) keys.push_back(Folded(KeyOf(track, command)));
      Arrange(SortedOrder(keys));
      return true;
    }
    case kCommandSortReverse:
      Arrange(ReversedOrder(tracks.size()));
      return true;
    case kCommandSortShuffle:
      Arrange(ShuffledOrder(tracks.size(), GetTickCount()));
      return true;
    default:
      return false;
  }
}

void PlayerApp::Jump() {
  const size_t index = AskForTrack(main_.handle(), player_->tracks(), player_->status().current);
  if (index >= player_->tracks().size()) return;
  playlist_.Choose(index);
  PlayTrack(index);
}

bool PlayerApp::DoEntry(int command) {
  const size_t chosen = playlist_.Chosen();
  const bool some = chosen < player_->tracks().size();
  switch (command) {
    case kCommandJump:
      Jump();
      return true;
    case kCommandSaveList:
      SaveList();
      return true;
    case kCommandStopAdding:
      StopAdding();
      return true;
    case kCommandEntryPlay:
      if (some) PlayTrack(chosen);
      return true;
    case kCommandEntryInfo:
      if (some) ShowInfo(main_.handle(), library_, player_->tracks()[chosen].path);
      return true;
    default:
      return false;
  }
}

}  // namespace velmora
