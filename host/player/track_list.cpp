#include "host/player/track_list.h"

#include <windows.h>

#include <algorithm>

#include "host/input.h"
#include "host/system.h"

namespace velmora {
namespace {

constexpr size_t kMaxTracks = 20000;
constexpr int kMaxDepth = 16;  // of folders

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Without folder and extension.
std::wstring NameOf(const std::wstring& path) {
  const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
  const size_t point = name.find_last_of(L'.');
  return point == std::wstring::npos || point == 0 ? name : name.substr(0, point);
}

struct Found {
  std::wstring name;
  bool is_folder;
};

std::vector<Found> ContentsOf(const std::wstring& folder) {
  std::vector<Found> contents;
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return contents;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    contents.push_back({name, IsFolder(found.dwFileAttributes)});
  } while (FindNextFileW(search, &found));
  FindClose(search);
  std::sort(contents.begin(), contents.end(), [](const Found& a, const Found& b) {
    return lstrcmpiW(a.name.c_str(), b.name.c_str()) < 0;
  });
  return contents;
}

}  // namespace

size_t TrackList::Add(const std::wstring& path) {
  const std::wstring full = FullPath(path);  // the program's current folder may change
  const size_t before = size();
  if (IsFolder(GetFileAttributesW(full.c_str()))) {
    const bool is_root = full.back() == L'\\';
    return AddFolder(is_root ? full.substr(0, full.size() - 1) : full, 0);
  }
  if (Input::IsMedia(full)) Append(full);
  return size() - before;
}

size_t TrackList::AddFolder(const std::wstring& folder, int depth) {
  const size_t before = size();
  for (const Found& found : ContentsOf(folder)) {
    const std::wstring path = folder + L"\\" + found.name;
    if (found.is_folder) {
      if (depth < kMaxDepth) AddFolder(path, depth + 1);
    } else if (Input::IsMedia(path)) {
      Append(path);
    }
  }
  return size() - before;
}

void TrackList::Append(const std::wstring& path) {
  if (size() < kMaxTracks && path.size() < kelvo::kMaxText) {
    tracks_.push_back({path, NameOf(path), 0, false});
  }
}

void TrackList::Clear() {
  tracks_.clear();
  known_before_ = 0;
}

void TrackList::Remove(size_t index) {
  tracks_.erase(tracks_.begin() + index);
  if (index < known_before_) --known_before_;
}

void TrackList::Move(size_t from, size_t to) {
  const Track track = tracks_[from];
  tracks_.erase(tracks_.begin() + from);
  tracks_.insert(tracks_.begin() + to, track);
  known_before_ = std::min(known_before_, std::min(from, to));
}

void TrackList::Arrange(const std::vector<size_t>& order) {
  std::vector<Track> arranged;
  arranged.reserve(order.size());
  for (const size_t index : order) arranged.push_back(std::move(tracks_[index]));
  tracks_ = std::move(arranged);
  known_before_ = 0;
}

void TrackList::Learn(const Library& library, size_t index) {
  Track& track = tracks_[index];
  track.known = true;
  const Input input(library, track.path);
  FileInfo info;
  if (input.Missing() || !input.GetInfo(track.path, &info)) return;
  if (info.display_title[0] != 0) track.title = info.display_title;
  track.length_ms = info.length_ms;
}

size_t TrackList::FirstUnknown() {
  while (known_before_ < size() && tracks_[known_before_].known) ++known_before_;
  return known_before_;
}

}  // namespace velmora
