#include "host/player/bookmark_link.h"

#include <kelvo/bookmarks.h>
#include <kelvo/messages.h>

#include "host/last_played.h"
#include "host/milliseconds.h"

namespace velmora {

BookmarkLink::BookmarkLink(const Library& library, Player& player)
    : library_(library),
      player_(player),
      bookmarks_(library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks)) {
  if (bookmarks_) bookmarks_->LoadBookmarks();
}

bool BookmarkLink::AddCurrent() {
  const PlayerStatus status = player_.status();
  if (!bookmarks_ || status.state == PlayState::kStopped) return false;
  return bookmarks_->AddBookmark(player_.open_path().c_str(),
                                 static_cast<int32_t>(status.position_ms / 1000),
                                 status.title.c_str()) != 0;
}

void BookmarkLink::Show(HWND parent) {
  if (bookmarks_) bookmarks_->ShowBookmarks(parent);
}

void BookmarkLink::OnPlayBookmark(WPARAM command, LPARAM index) {
  wchar_t path[kelvo::kMaxText] = L"";
  int32_t position_s = 0;
  if (!bookmarks_ ||
      !bookmarks_->GetBookmark(static_cast<int32_t>(index), path, nullptr, &position_s)) {
    return;
  }
  if (command != kelvo::kBookmarkPlay) {
    player_.Add({path});
  } else if (player_.Replace({path})) {
    player_.PlayTrack(0, ToMilliseconds(position_s));
  }
}

void BookmarkLink::KeepPlace() {
  const PlayerStatus status = player_.status();
  if (status.state == PlayState::kStopped) {
    std::wstring path;
    int position_s;
    TakeLastPlayed(library_, &path, &position_s);  // of an earlier run: nobody wants it any more
    return;
  }
  StoreLastPlayed(library_, player_.open_path(), static_cast<int>(status.position_ms),
                  status.title.c_str());
}

bool BookmarkLink::ResumePlace() {
  std::wstring path;
  int position_s;
  if (!TakeLastPlayed(library_, &path, &position_s)) return false;
  const auto find = [&] {
    size_t i = 0;
    while (i < player_.tracks().size() &&
           lstrcmpiW(player_.tracks()[i].path.c_str(), path.c_str()) != 0) {
      ++i;
    }
    return i;
  };
  // The current one first: a list may hold a file twice.
  size_t index = player_.status().current;
  if (index == kNoTrack || lstrcmpiW(player_.tracks()[index].path.c_str(), path.c_str()) != 0) {
    index = find();
  }
  if (index == player_.tracks().size()) player_.Add({path});
  return player_.PlayTrack(index, ToMilliseconds(position_s));
}

}  // namespace velmora
