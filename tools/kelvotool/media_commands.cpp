// tags, playlist, save: what the library's readers make of media files and playlists.
#include <string.h>

#include "catalog/media/entry_list.h"
#include "playlist/playlist_files.h"
#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/linked_information.h"

namespace kelvo::tool {
namespace {

class MediaFiles {
 public:
  // False, with a message, when the file gives no entry.
  bool Add(const wchar_t* path, EntryList* list) noexcept {
    const size_t before = list->size();
    AddPath({files_, information_, &guard_}, path, list);
    if (list->size() > before) return true;
    const MediaKind kind = MediaKindOf(path);
    ListFormat format;
    if (kind == MediaKind::kNone) {
      PrintError(path, "neither a media file nor a playlist");
    } else if (!files_.Exists(path)) {
      PrintError(path, "no such file");
    } else if (!ListFormatOf(kind, &format)) {
      PrintError(path, "cannot be read");
    } else if (!files_.OpenRead(path, Share::kReadWrite)) {
      PrintError(path, "cannot be opened");
    } else {
      PrintError(path, "a playlist that gives no entries; lint may say why");
    }
    return false;
  }

 private:
  FileSystem& files_ = SystemFiles();
  LinkedInformation information_{files_};
  ChainGuard guard_;  // bounds what one command takes
};

const char* KindName(MediaKind kind) noexcept {
  switch (kind) {
    case MediaKind::kMpeg:
      return "mpeg";
    case MediaKind::kOgg:
      return "ogg";
    default:
      return "wma";
  }
}

void PrintTexts(const MediaEntry& entry) noexcept {
  char title[kTextCapacity];
  TitleText(entry, title);
  TagField fields[3];
  ArtistText(entry, fields[0]);
  AlbumText(entry, fields[1]);
  GenreText(entry, fields[2]);
  Print(Stream::kOut, "\t");
  PrintAnsi(Stream::kOut, title, strlen(title));
  for (const TagField& field : fields) {
    Print(Stream::kOut, "\t");
    PrintAnsi(Stream::kOut, field, strlen(field));
  }
  Print(Stream::kOut, "\n");
}

int ShowTags(const Arguments& arguments) noexcept {
  MediaFiles files;
  int result = 0;
  for (const wchar_t* path : arguments) {
    ListFormat format;
    EntryList list;
    if (ListFormatOf(MediaKindOf(path), &format)) {
      PrintError(path, "a playlist, not a media file");
      result = 1;
    } else if (files.Add(path, &list)) {
      Print(Stream::kOut, KindName(MediaKindOf(path)));
      PrintTexts(list[0]);
    } else {
      result = 1;
    }
  }
  return result;
}

int ShowPlaylist(const Arguments& arguments) noexcept {
  MediaFiles files;
  EntryList list;
  int result = 0;
  for (const wchar_t* path : arguments) result |= !files.Add(path, &list);
  for (const MediaEntry& entry : list) {
    PrintNumber(Stream::kOut, static_cast<int>(entry.item));
    Print(Stream::kOut, "\t");
    Print(Stream::kOut, entry.path.c_str());
    PrintTexts(entry);
  }
  return result;
}

int Save(const Arguments& arguments) noexcept {
  FileSystem& system = SystemFiles();
  MediaFiles files;
  EntryList list;
  const wchar_t* const out = arguments.paths[0];
  if (!arguments.forced && MediaKindOf(out) != MediaKind::kM3u && system.Exists(out)) {
    PrintError(out, "not a playlist of this format; --force replaces it");
    return 1;
  }
  int result = 0;
  for (size_t i = 1; i < arguments.count; ++i) result |= !files.Add(arguments.paths[i], &list);
  if (result != 0) return result;
  bool complete;
  if (!WriteM3u(system, out, list, &complete)) {
    PrintError(out, "cannot be created");
  } else if (!complete) {
    PrintError(out, "cannot be written");
  } else {
    return 0;
  }
  return 1;
}

}  // namespace

const Command kTagsCommand = {
    L"tags",
    "  tags FILE...           kind, title, artist, album and genre of media files, as the\n"
    "                         catalog shows them, with tabs between\n",
    1,
    kAnyNumber,
    0,
    0,
    ShowTags};

const Command kPlaylistCommand = {
    L"playlist",
    "  playlist FILE...       the entries of playlists (M3U, PLS, ASX) and media files, in\n"
    "                         order: flag, path, title, artist, album, genre\n",
    1,
    kAnyNumber,
    0,
    0,
    ShowPlaylist};

const Command kSaveCommand = {
    L"save",
    "  save [--force] OUT.m3u FILE...\n"
    "                         writes the entries of playlists and media files as extended M3U;\n"
    "                         unless forced to, replaces playlists only; writes nothing when a\n"
    "                         file cannot be used\n",
    2,
    kAnyNumber,
    kForce,
    0,
    Save};

}  // namespace kelvo::tool
