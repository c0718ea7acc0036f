#include "host/player/bookmark_link.h"

#include <kelvo/bookmarks.h>
#include <kelvo/messages.h>
#include <kelvo/settings.h>

#include "host/system.h"
#include "host/text.h"

namespace velmora {
namespace {

// Of the file that the library keeps the bookmarks in; 0 without one.
DWORD BytesKept() {
  wchar_t folder[kelvo::kMaxText] = L"";
  DWORD bytes = sizeof folder - sizeof *folder;
  RegGetValueW(HKEY_LOCAL_MACHINE, kelvo::kInstallationKey, kelvo::kInstallFolderValue,
               RRF_RT_REG_SZ, nullptr, folder, &bytes);
  WIN32_FILE_ATTRIBUTE_DATA data;
  const std::wstring file = std::wstring(folder) + L"\\bookmarks.dat";
  return GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) ? data.nFileSizeLow : 0;
}

}  // namespace

BookmarkLink::BookmarkLink(const Library& library, Player& player)
    : player_(player), bookmarks_(library.Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks)) {
  if (bookmarks_) bookmarks_->LoadBookmarks();
}

bool BookmarkLink::AddCurrent() {
  const PlayerStatus status = player_.status();
  if (!bookmarks_ || status.state == PlayState::kStopped) return false;
  const DWORD before = BytesKept();
  SetLastError(ERROR_ACCESS_DENIED);  // so it is where nothing is tried: over a read-only file
  const bool added = bookmarks_->AddBookmark(player_.open_path().c_str(),
                                             static_cast<int32_t>(status.position_ms / 1000),
                                             status.title.c_str()) != 0;
  const DWORD why = GetLastError();
  if (added && BytesKept() > before) return true;  // the library does not say that it could not
  SetLastError(why);
  return false;
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
  } else {
    PlayListed(path, ToMilliseconds(position_s));
  }
}

bool BookmarkLink::PlayListed(const std::wstring& path, uint32_t position_ms) {
  const std::vector<Track>& tracks = player_.tracks();
  const auto is_there = [&](size_t index) {
    return index < tracks.size() && lstrcmpiW(tracks[index].path.c_str(), path.c_str()) == 0;
  };
  // The current one first: a list may hold a file twice.
  size_t index = player_.status().current;
  if (!is_there(index)) {
    for (index = 0; index < tracks.size() && !is_there(index);) ++index;
  }
  if (index == tracks.size() && !player_.Add({path})) return false;
  return player_.PlayTrack(index, position_ms);
}

bool BookmarkLink::TakeLastPlayed(std::wstring* path, uint32_t* position_ms) {
  wchar_t text[kelvo::kMaxText] = L"";
  int32_t seconds = 0;
  if (!bookmarks_ || !bookmarks_->TakeLastPlayed(text, &seconds)) return false;
  *path = text;
  *position_ms = ToMilliseconds(seconds);
  return true;
}

void BookmarkLink::SavePlace() {
  const PlayerStatus status = player_.status();
  if (status.state == PlayState::kStopped) {
    std::wstring path;
    uint32_t position_ms;
    TakeLastPlayed(&path, &position_ms);  // of an earlier run: nobody wants it any more
    return;
  }
  const std::wstring path = FullPath(player_.open_path());  // the next run may start elsewhere
  if (!bookmarks_ || path.empty()) return;
  bookmarks_->SetLastPlayed(path.c_str(), static_cast<int32_t>(status.position_ms / 1000),
                            status.title.c_str());
}

bool BookmarkLink::ResumePlace() {
  std::wstring path;
  uint32_t position_ms;
  if (!TakeLastPlayed(&path, &position_ms)) return false;
  return PlayListed(path, position_ms);
}

}  // namespace velmora
