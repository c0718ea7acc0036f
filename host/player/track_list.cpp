#include "host/player/track_list.h"

#include <windows.h>

#include <algorithm>

#include "host/input.h"

namespace velmora {
namespace {

constexpr size_t kMaxTracks = 20000;

// Without folder and extension.
std::wstring NameOf(const std::wstring& path) {
  const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
  const size_t point = name.find_last_of(L'.');
  return point == std::wstring::npos || point == 0 ? name : name.substr(0, point);
}

}  // namespace

bool TrackList::Append(const std::wstring& path) {
  if (size() >= kMaxTracks || path.empty() || path.size() >= kelvo::kMaxText) return false;
  tracks_.push_back({path, NameOf(path), 0, false});
  return true;
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
  if (input.Missing() || !input.GetInfo(track.path, &info)) {
    track.trouble = TroubleOf(library, track.path);
    return;
  }
  if (info.display_title[0] != 0) track.title = info.display_title;
  track.length_ms = info.length_ms;
}

size_t TrackList::FirstUnknown() {
  while (known_before_ < size() && tracks_[known_before_].known) ++known_before_;
  return known_before_;
}

}  // namespace velmora
