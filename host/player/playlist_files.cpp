#include "host/player/playlist_files.h"

#include "base/text/ansi.h"
#include "host/input.h"
#include "host/text.h"
#include "playlist/playlist_files.h"

namespace velmora {
namespace {

class Collector final : public kelvo::PathSink {
 public:
  explicit Collector(std::vector<std::wstring>* found) : found_(found) {}

  void AddMedia(kelvo::MediaKind, const wchar_t* path, const kelvo::ListPosition*) noexcept final {
    if (Input::IsMedia(path)) {
      found_->push_back(path);
    } else {
      ++left_out_;
    }
  }
  size_t left_out() const { return left_out_; }

 private:
  std::vector<std::wstring>* found_;
  size_t left_out_ = 0;
};

bool IsLost(const std::wstring& path) {
  char bytes[kelvo::kMaxText];
  bool lossy = false;
  kelvo::WideToAnsi(path.c_str(), path.size(), bytes, sizeof bytes, &lossy);
  return lossy;
}

// "artist - title", as it is shown, is also what stands in a playlist.
bool SetTag(const std::wstring& title, kelvo::MediaEntry* entry) {
  const size_t sign = title.find(L" - ");
  if (sign == std::wstring::npos) return true;
  entry->tag.Reset(kelvo::HeapNew<kelvo::TagBlock>());
  if (!entry->tag) return false;
  kelvo::CopyToField(title.substr(0, sign).c_str(), entry->tag->artist);
  kelvo::CopyToField(title.c_str() + sign + 3, entry->tag->title);
  return true;
}

}  // namespace

bool IsPlaylist(const std::wstring& path) {
  kelvo::ListFormat format;
  return kelvo::ListFormatOf(kelvo::MediaKindOf(path.c_str()), &format);
}

size_t ReadPlaylist(const std::wstring& path, std::vector<std::wstring>* found) {
  Collector collector(found);
  kelvo::ChainGuard guard;
  kelvo::ExpandPath(kelvo::SystemFiles(), path.c_str(), &guard, collector);
  return collector.left_out();
}

WrittenPlaylist WritePlaylist(const std::wstring& path, const std::vector<Track>& tracks) {
  kelvo::EntryList list;
  WrittenPlaylist result = {false, 0};
  for (const Track& track : tracks) {
    result.lost_names += IsLost(track.path);
    kelvo::MediaEntry* const entry = list.Add(track.path.c_str());
    if (!entry || !SetTag(track.title, entry)) return result;
  }
  return kelvo::WriteM3u(kelvo::SystemFiles(), path.c_str(), list, &result.written), result;
}

}  // namespace velmora
