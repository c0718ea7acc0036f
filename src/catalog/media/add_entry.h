#pragma once

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"
#include "kelvo/media_info.h"

namespace kelvo {

// What an input plug-in's one-shot query tells about a file. All zero before the call; a call that
// fails may have filled a part.
struct MediaTexts {
  wchar_t title[kTextCapacity] = {};
  wchar_t artist[kTextCapacity] = {};
  wchar_t album[kTextCapacity] = {};
  MediaInfo format = {};
};

// A plug-in's information call; false when the file could not be opened and read.
template <class Plugin>
bool QueryPlugin(Plugin& plugin, const wchar_t* path, MediaTexts* texts) noexcept {
  uint32_t ignored = 0;
  return plugin.GetFileInfo(path, nullptr, texts->album, &texts->format, nullptr, &ignored,
                            texts->artist, texts->title) != 0;
}

// The input plug-ins, as far as the catalog and the playlists ask them: supplied by the library's
// features, or by a program that links the readers itself.
class MediaInformation {
 public:
  // False when the file could not be opened and read.
  virtual bool OggInformation(const wchar_t* path, MediaTexts* texts) noexcept = 0;
  virtual bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept = 0;
  // False: Windows Media files do not appear at all.
  virtual bool WmaAvailable() noexcept = 0;

 protected:
  ~MediaInformation() = default;
};

// Appends the entry of a media file, with its tag; its item word is 0. False when nothing was
// added: the kind is no media file's, memory is out, or Windows Media is not available. An MPEG
// file without a tag that can be read has no tag block; one that a plug-in cannot read has one with
// empty fields, or none when memory is out for it.
bool AddMediaEntry(MediaKind kind, FileSystem& files, MediaInformation& information,
                   const wchar_t* path, EntryList* list) noexcept;

}  // namespace kelvo
