// The media files and playlists of the device: how they are found, and what becomes of the lists
// when files are deleted, renamed, or get another tag.
#pragma once

#include "base/files/file_system.h"
#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// The paths of the playlists found on the device. Grows by 100 at a time.
class PlaylistFiles {
 public:
  static constexpr size_t kGrowth = 100;

  // False, with the list as before, when memory is out.
  bool Add(const wchar_t* path) noexcept {
    if (paths_.size() == paths_.capacity() && !paths_.Reserve(paths_.capacity() + kGrowth)) {
      return false;
    }
    HeapText copy;
    return copy.Assign(path) && paths_.Append(std::move(copy));
  }
  size_t size() const noexcept { return paths_.size(); }
  const wchar_t* operator[](size_t i) const noexcept { return paths_[i].c_str(); }
  void Replace(size_t i, HeapText path) noexcept { paths_[i] = std::move(path); }
  void RemoveAt(size_t i) noexcept { paths_.RemoveAt(i); }
  void Clear() noexcept { paths_.Clear(); }

 private:
  Array<HeapText> paths_;
};

// Paths of more characters, terminator included, are passed over.
inline constexpr size_t kScanPathCapacity = 256;

struct ScanResult {
  EntryList* media;
  PlaylistFiles* playlists;
};

// Whoever waits for a scan.
class ScanProgress {
 public:
  // Asked at each file and folder, with the number of files found so far. False: enough, what was
  // found stays.
  virtual bool GoesOn(size_t found) noexcept = 0;

 protected:
  ~ScanProgress() = default;
};

// Appends every media file and playlist below `folder` (no backslash at its end; the empty text is
// the whole device) in the file system's order. What cannot be read or has no memory is left out.
// False when it was ended.
bool ScanFolder(FileSystem& files, MediaInformation& information, const wchar_t* folder,
                const ScanResult& result, ScanProgress& progress) noexcept;

// Takes out the entry of a file that was deleted from the Media Catalog. The later entries move
// down and the last one then stands in the last two slots: until the next scan it shows twice after
// a regrouping. The doubled slot owns its own copies. When the last entry itself is taken out, or
// memory is out for the copies, the last slot stays without a path.
void DeleteEntry(EntryList& entries, size_t at) noexcept;

// The folder of `path`, a backslash and `name`. Without a value when memory is out.
HeapText RenamedPath(const wchar_t* path, const wchar_t* name) noexcept;

// Gives the tag of an edited file to its other entries in a playlist.
void CopyTagToPlaylist(const MediaEntry& edited, EntryList& playlist) noexcept;

}  // namespace kelvo
