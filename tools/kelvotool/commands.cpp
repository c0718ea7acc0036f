#include <string.h>

#include "catalog/media/entry_list.h"
#include "playlist/playlist_files.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/device_files.h"
#include "tools/kelvotool/effects_check.h"
#include "tools/kelvotool/linked_information.h"
#include "tools/kelvotool/lint.h"

namespace kelvo::tool {
namespace {

constexpr char kHelp[] =
    "Usage: kelvotool COMMAND ARGUMENT...\n"
    "\n"
    "  tags FILE...           kind, title, artist, album and genre of media files, as the\n"
    "                         catalog shows them, with tabs between\n"
    "  playlist FILE...       the entries of playlists (M3U, PLS, ASX) and media files, in\n"
    "                         order: flag, path, title, artist, album, genre\n"
    "  save [--force] OUT.m3u FILE...\n"
    "                         writes the entries of playlists and media files as extended M3U;\n"
    "                         unless forced to, replaces playlists only\n"
    "  lint [--device FOLDER] LIST...\n"
    "                         the lines of playlists that the player drops or takes literally,\n"
    "                         and why; FOLDER is where a device's files lie, the lists among them\n"
    "  effects [KELVO.DLL]    equalizer and bass of a library against recorded results, which are\n"
    "                         the same for every processor\n"
    "  --help                 this text\n"
    "\n"
    "Exit code: 0 when all went well, 1 when some file could not be used or written, or lint or\n"
    "effects found something, 2 for wrong usage. When a file cannot be used, save writes "
    "nothing.\n";

class Tool {
 public:
  // `device`: where a device's files lie; null for those of this machine.
  Tool(int count, const wchar_t* const* files, bool forced, const wchar_t* device) noexcept
      : count_(count), arguments_(files), forced_(forced), device_(device) {}

  int Tags() noexcept {
    for (int i = 0; i < count_; ++i) {
      ListFormat format;
      if (ListFormatOf(MediaKindOf(arguments_[i]), &format)) {
        Fail(arguments_[i], "a playlist, not a media file");
        continue;
      }
      EntryList list;
      if (!Add(arguments_[i], &list)) continue;
      Print(Stream::kOut, KindName(MediaKindOf(arguments_[i])));
      PrintTexts(list[0]);
    }
    return result_;
  }

  int Playlist() noexcept {
    EntryList list;
    for (int i = 0; i < count_; ++i) Add(arguments_[i], &list);
    for (const MediaEntry& entry : list) {
      PrintNumber(Stream::kOut, static_cast<int>(entry.item));
      Print(Stream::kOut, "\t");
      Print(Stream::kOut, entry.path.c_str());
      PrintTexts(entry);
    }
    return result_;
  }

  int Save() noexcept {
    EntryList list;
    const wchar_t* const out = arguments_[0];
    if (!forced_ && MediaKindOf(out) != MediaKind::kM3u && files_.Exists(out)) {
      Fail(out, "not a playlist of this format; --force replaces it");
      return result_;
    }
    for (int i = 1; i < count_; ++i) Add(arguments_[i], &list);
    if (result_ != 0) return result_;
    bool complete;
    if (!WriteM3u(files_, out, list, &complete)) {
      Fail(out, "cannot be created");
    } else if (!complete) {
      Fail(out, "cannot be written");
    }
    return result_;
  }

  int Check() noexcept {
    DeviceFiles device(files_, device_);
    Lint lint(device_ ? device : files_);
    for (int i = 0; i < count_; ++i) {
      const wchar_t* const path = device_ ? device.DevicePath(arguments_[i]) : arguments_[i];
      if (!path) {
        Fail(arguments_[i], "not in the device's folder");
      } else if (!lint.Check(path)) {
        result_ = 1;
      }
    }
    return result_;
  }

  int Effects() noexcept {
    EffectsProcessor* const effects = LoadEffects(count_ > 0 ? arguments_[0] : nullptr);
    if (!effects) return 1;
    size_t first_wrong;
    const size_t right = CheckEffects(*effects, &first_wrong);
    Print(Stream::kOut, "effects: ");
    PrintNumber(Stream::kOut, static_cast<int>(right));
    Print(Stream::kOut, " of ");
    PrintNumber(Stream::kOut, static_cast<int>(kEffectsStepCount));
    Print(Stream::kOut, " blocks are as recorded");
    if (right < kEffectsStepCount) {
      Print(Stream::kOut, "; the first other one is number ");
      PrintNumber(Stream::kOut, static_cast<int>(first_wrong) + 1);
      result_ = 1;
    }
    Print(Stream::kOut, "\n");
    return result_;
  }

 private:
  void Fail(const wchar_t* path, const char* what) noexcept {
    PrintError(path, what);
    result_ = 1;
  }

  // False, with a message, when the file gives no entry.
  bool Add(const wchar_t* path, EntryList* list) noexcept {
    const size_t before = list->size();
    AddPath({files_, information_, &guard_}, path, list);
    if (list->size() > before) return true;
    const MediaKind kind = MediaKindOf(path);
    ListFormat format;
    if (kind == MediaKind::kNone) {
      Fail(path, "neither a media file nor a playlist");
    } else if (!files_.Exists(path)) {
      Fail(path, "no such file");
    } else if (!ListFormatOf(kind, &format)) {
      Fail(path, "cannot be read");
    } else if (!files_.OpenRead(path, Share::kReadWrite)) {
      Fail(path, "cannot be opened");
    } else {
      Fail(path, "a playlist that gives no entries; lint may say why");
    }
    return false;
  }

  static const char* KindName(MediaKind kind) noexcept {
    switch (kind) {
      case MediaKind::kMpeg:
        return "mpeg";
      case MediaKind::kOgg:
        return "ogg";
      default:
        return "wma";
    }
  }

  static void PrintTexts(const MediaEntry& entry) noexcept {
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

  int count_;
  const wchar_t* const* arguments_;
  bool forced_;
  const wchar_t* device_;
  FileSystem& files_ = SystemFiles();
  LinkedInformation information_{files_};
  ChainGuard guard_;  // bounds what one command takes
  int result_ = 0;
};

struct Command {
  const wchar_t* name;
  int (Tool::*run)() noexcept;
  int least_arguments;
};

constexpr Command kCommands[] = {{L"tags", &Tool::Tags, 1},
                                 {L"playlist", &Tool::Playlist, 1},
                                 {L"save", &Tool::Save, 2},
                                 {L"lint", &Tool::Check, 1},
                                 {L"effects", &Tool::Effects, 0}};

}  // namespace

int Run(int count, const wchar_t* const* arguments) noexcept {
  if (count > 0 && CompareWide(arguments[0], L"--help") == 0) {
    Print(Stream::kOut, kHelp);
    return 0;
  }
  for (const Command& command : kCommands) {
    if (count == 0 || CompareWide(arguments[0], command.name) != 0) continue;
    const auto has = [&](int (Tool::*run)() noexcept, const wchar_t* option) {
      return count > 1 && command.run == run && CompareWide(arguments[1], option) == 0;
    };
    const bool forced = has(&Tool::Save, L"--force"), on_device = has(&Tool::Check, L"--device");
    const int first = 1 + forced + 2 * on_device;
    if (count - first < command.least_arguments) {
      PrintError(arguments[0], "a file is missing; see kelvotool --help");
      return 2;
    }
    Tool tool(count - first, arguments + first, forced, on_device ? arguments[2] : nullptr);
    return (tool.*command.run)();
  }
  if (count > 0) PrintError(arguments[0], "no such command");
  Print(Stream::kError, kHelp);
  return 2;
}

}  // namespace kelvo::tool
