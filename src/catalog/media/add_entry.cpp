#include "catalog/media/add_entry.h"

#include "catalog/media/id3v1.h"

namespace kelvo {
namespace {

bool AddWithTexts(const wchar_t* path, const MediaTexts& texts, EntryList* list) noexcept {
  MediaEntry* entry = list->Add(path);
  if (!entry) return false;
  entry->tag.Reset(HeapNew<TagBlock>());
  if (entry->tag) {
    CopyToField(texts.title, entry->tag->title);
    CopyToField(texts.artist, entry->tag->artist);
    CopyToField(texts.album, entry->tag->album);
    CopyToField(texts.format.genre, entry->tag->genre);
  }
  return true;
}

}  // namespace

bool AddMediaEntry(MediaKind kind, FileSystem& files, MediaInformation& information,
                   const wchar_t* path, EntryList* list) noexcept {
  if (kind == MediaKind::kMpeg) {
    MediaEntry* entry = list->Add(path);
    if (entry) ReadId3v1(files, entry);
    return entry != nullptr;
  }
  if (kind != MediaKind::kOgg && (kind != MediaKind::kWma || !information.WmaAvailable())) {
    return false;
  }
  MediaTexts texts;
  if (kind == MediaKind::kOgg) {
    information.OggInformation(path, &texts);
  } else {
    information.WmaInformation(path, &texts);
  }
  return AddWithTexts(path, texts, list);
}

}  // namespace kelvo
