// Playlists in playlists, expanded in place.
#pragma once

#include "base/files/file_system.h"
#include "base/memory/array.h"
#include "base/memory/heap_text.h"
#include "catalog/media/entry_list.h"
#include "playlist/list_entry.h"

namespace kelvo {

// A line of a playlist, for those who report it; valid during the call only.
struct ListPosition {
  const wchar_t* list;  // as it was opened
  uint32_t line;        // from 1
  bool is_rest;         // a further piece of a line that is too long for the reader
  TextLine text;
};

// Why a line, or the path that it names, gives nothing.
enum class Skipped {
  kLine,            // names nothing
  kTooLong,         // folder and name are longer than a path may be
  kNoKind,          // the path has no extension that is known
  kNameNotInAnsi,   // a playlist whose name the code page does not hold
  kRefused,         // by the guard
  kUnreadable,      // a playlist that cannot be opened
  kBehindTextsEnd,  // all behind an end-of-text character; the position is that of the last line
};

// Receives the media files of an expansion, in order; whether they exist has not been looked at.
// The position is that of the naming line, null for the path that the expansion began with.
class PathSink {
 public:
  virtual void AddMedia(MediaKind kind, const wchar_t* path, const ListPosition* from) noexcept = 0;
  // `path` is empty where the line names none.
  virtual void Skip(Skipped, const wchar_t*, const ListPosition*) noexcept {}

 protected:
  ~PathSink() = default;
};

// Decides how far an expansion goes. Optional: without one, a playlist that lists itself is
// expanded again and again, until memory is out.
class NestingGuard {
 public:
  // Before `path` is opened; false skips it. Each Enter() that allowed it is followed by one
  // Leave(), in the opposite order.
  virtual bool Enter(const wchar_t* path) noexcept = 0;
  virtual void Leave() noexcept = 0;
  // For each line of the playlist entered last, and for each that names a media file; false skips
  // the rest of that playlist.
  virtual bool CountLine() noexcept = 0;
  virtual bool CountMedia() noexcept = 0;

 protected:
  ~NestingGuard() = default;
};

// One command's. Refuses a playlist that is being expanded already, and bounds what lists inside
// lists amount to: a few that name each other crosswise would go on for ages without any of them
// being inside itself. What the outermost lists name themselves is not bounded. Refuses as well
// when memory is out.
class ChainGuard final : public NestingGuard {
 public:
  static constexpr size_t kMostLists = 10000;
  static constexpr size_t kMostNestedMedia = 100000;
  static constexpr size_t kMostNestedLines = 1000000;

  bool Enter(const wchar_t* path) noexcept override;
  void Leave() noexcept override { chain_.RemoveAt(chain_.size() - 1); }
  bool CountLine() noexcept override { return !IsNested() || ++lines_ <= kMostNestedLines; }
  bool CountMedia() noexcept override { return !IsNested() || ++media_ <= kMostNestedMedia; }
  bool IsOpen(const wchar_t* path) const noexcept;

 private:
  bool IsNested() const noexcept { return chain_.size() > 1; }

  Array<HeapText> chain_;
  size_t lists_ = 0;
  size_t media_ = 0;
  size_t lines_ = 0;
};

// Hands over `path` itself, or the media files that it names when it is a playlist. The guard may
// be null. Takes the same stack at every depth; of a deep chain only the innermost playlists stay
// open, the outer ones are opened again when their turn comes.
void ExpandPath(FileSystem& files, const wchar_t* path, NestingGuard* guard,
                PathSink& sink) noexcept;

// The same for a file that is to be read as a playlist, whatever its extension.
void ExpandList(FileSystem& files, const wchar_t* path, ListFormat format, NestingGuard* guard,
                PathSink& sink) noexcept;

}  // namespace kelvo
