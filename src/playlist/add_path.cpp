#include "playlist/playlist_files.h"

#include "catalog/media/add_entry.h"

namespace kelvo {
namespace {

class EntryAdder final : public PathSink {
 public:
  EntryAdder(const PlaylistSources& sources, EntryList* list) noexcept
      : sources_(sources), list_(list) {}

  void AddMedia(MediaKind kind, const wchar_t* path, const ListPosition*) noexcept override {
    if (sources_.files.Exists(path) &&
        AddMediaEntry(kind, sources_.files, sources_.information, path, list_)) {
      list_->back().item = kEntryFlag;
    }
  }

 private:
  const PlaylistSources& sources_;
  EntryList* list_;
};

void Read(const PlaylistSources& sources, const wchar_t* path, ListFormat format,
          EntryList* list) noexcept {
  EntryAdder adder(sources, list);
  ExpandList(sources.files, path, format, sources.guard, adder);
}

}  // namespace

void AddPath(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept {
  EntryAdder adder(sources, list);
  ExpandPath(sources.files, path, sources.guard, adder);
}

void ReadM3u(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept {
  Read(sources, path, ListFormat::kM3u, list);
}

void ReadPls(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept {
  Read(sources, path, ListFormat::kPls, list);
}

void ReadAsx(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept {
  Read(sources, path, ListFormat::kAsx, list);
}

}  // namespace kelvo
