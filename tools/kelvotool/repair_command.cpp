// repair: finds a playlist's missing files elsewhere on the device.
#include "base/files/file_replacement.h"
#include "base/text/ansi.h"
#include "playlist/expansion.h"
#include "tools/kelvotool/card_files.h"
#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/device_files.h"

namespace kelvo::tool {
namespace {

constexpr uint64_t kLargestList = 16u << 20;

// What is to stand in a line, instead of the value that the reader takes from it.
struct Change {
  uint32_t line;  // from 1
  size_t at, length;
  char text[kTextCapacity];
  size_t text_length;
};

// Where the value lies in a line that names something.
ListEntry ValueOf(const ListPosition& from, ListFormat format) noexcept {
  const TextLine& line = from.text;
  ListEntry value = {line.text, line.length, true};
  if (format == ListFormat::kPls) {
    size_t at = 0;
    while (at < line.length && line.text[at++] != '=') {
    }
    value = {line.text + at, line.length - at, false};
  } else if (!FindEntry(format, line, nullptr, &value)) {
    value.length = 0;
  }
  return value;
}

// One list. Which lines name what is decided by the player's own expansion; lists in it are not
// opened.
class Repair final : private PathSink, private NestingGuard {
 public:
  Repair(DeviceFiles& device, const CardFiles& card, const wchar_t* list,
         ListFormat format) noexcept
      : device_(device), card_(card), list_(list), format_(format) {}

  // False when something was not found and could not be mended either.
  bool Run() noexcept {
    ExpandPath(device_, list_, this, *this);
    return clean_;
  }
  const Array<Change>& changes() const noexcept { return changes_; }

 private:
  bool Enter(const wchar_t*) noexcept override { return depth_++ == 0 || Back(); }
  void Leave() noexcept override { --depth_; }
  bool CountLine() noexcept override { return true; }
  bool CountMedia() noexcept override { return true; }
  bool Back() noexcept {
    --depth_;
    return false;
  }

  void AddMedia(MediaKind, const wchar_t* path, const ListPosition* from) noexcept override {
    if (from && !device_.Exists(path)) Missing(path, *from);
  }
  void Skip(Skipped why, const wchar_t* path, const ListPosition* from) noexcept override {
    if (!from) {
      PrintError(list_, "cannot be opened");
      clean_ = false;
    } else if (why == Skipped::kRefused && !device_.Exists(path)) {
      Missing(path, *from);
    }
  }

  void Missing(const wchar_t* path, const ListPosition& from) noexcept;
  // The one that lies most like the missing one; null when several do so, or there is none.
  const wchar_t* Best(const wchar_t* path) const noexcept;
  bool Mend(const wchar_t* path, const ListPosition& from) noexcept;

  DeviceFiles& device_;
  const CardFiles& card_;
  const wchar_t* list_;
  ListFormat format_;
  int depth_ = 0;
  bool clean_ = true;
  Array<Change> changes_;
};

// Behind the last separator, whichever the writer's system has.
const wchar_t* NameOf(const wchar_t* path) noexcept {
  const wchar_t* name = FileNameOf(path);
  if (const wchar_t* slash = FindLastWide(name, L'/')) name = slash + 1;
  return name;
}

const wchar_t* Repair::Best(const wchar_t* path) const noexcept {
  const wchar_t* best = nullptr;
  size_t most = 0;
  bool is_alone = false;
  for (const HeapText& file : card_.paths()) {
    if (!EqualNoCase(FileNameOf(file.c_str()), NameOf(path))) continue;
    const size_t common = CommonFolders(file.c_str(), path);
    if (best && common < most) continue;
    is_alone = !best || common > most;
    best = file.c_str();
    most = common;
  }
  return is_alone ? best : nullptr;
}

bool Repair::Mend(const wchar_t* path, const ListPosition& from) noexcept {
  const ListEntry value = ValueOf(from, format_);
  Change change;
  // A name without folder is one beside the list and stays that; nothing but a whole path leads
  // elsewhere.
  const size_t folder = static_cast<size_t>(FileNameOf(path) - path);
  const bool is_beside =
      static_cast<size_t>(FileNameOf(list_) - list_) == folder && EqualNoCase(path, list_, folder);
  bool lossy = false;
  change.text_length = WideToAnsi(value.in_folder && is_beside ? path + folder : path,
                                  kTextCapacity, change.text, sizeof(change.text), &lossy);
  if (lossy || from.is_rest || from.text.continues || value.length == 0) return false;
  change.line = from.line;
  change.at = static_cast<size_t>(value.text - from.text.text);
  change.length = value.length;
  return changes_.Append(change);
}

void Repair::Missing(const wchar_t* path, const ListPosition& from) noexcept {
  Print(Stream::kOut, list_);
  Print(Stream::kOut, ":");
  PrintNumber(Stream::kOut, static_cast<int>(from.line));
  Print(Stream::kOut, ": not found: ");
  Print(Stream::kOut, path);
  Print(Stream::kOut, "\n");
  const wchar_t* const best = Best(path);
  const bool mended = best && Mend(best, from);
  for (const HeapText& file : card_.paths()) {
    if (!EqualNoCase(FileNameOf(file.c_str()), NameOf(path))) continue;
    Print(Stream::kOut, mended && file.c_str() == best ? "\ttaken: " : "\tof this name: ");
    Print(Stream::kOut, file.c_str());
    Print(Stream::kOut, "\n");
  }
  if (!mended) clean_ = false;
}

// A list's bytes with the changes, which are in the order of the lines.
bool WriteChanged(const Array<char>& bytes, const Array<Change>& changes,
                  FileWriter& out) noexcept {
  size_t line_start = 0, written = 0;
  uint32_t line = 1;
  for (const Change& change : changes) {
    for (; line < change.line && line_start < bytes.size(); ++line_start) {
      line += bytes[line_start] == '\n';
    }
    const size_t value = line_start + change.at;
    if (value + change.length > bytes.size() ||
        !out.Write(bytes.data() + written, value - written) ||
        !out.Write(change.text, change.text_length)) {
      return false;
    }
    written = value + change.length;
  }
  return out.Write(bytes.data() + written, bytes.size() - written) && out.Flush();
}

// "list.m3u": "list (mended).m3u".
bool MendedName(const wchar_t* path, wchar_t (&name)[kTextCapacity]) noexcept {
  const wchar_t* const extension = FindLastWide(path, L'.');
  CopyWide(name, kTextCapacity, path, static_cast<size_t>(extension - path));
  return AppendWide(name, kTextCapacity, L" (mended)") &&
         AppendWide(name, kTextCapacity, extension);
}

bool WriteMended(const wchar_t* path, const Array<Change>& changes, bool forced) noexcept {
  FileSystem& files = SystemFiles();
  wchar_t name[kTextCapacity];
  if (!MendedName(path, name)) return PrintError(path, "its name is too long"), false;
  if (!forced && files.Exists(name)) {
    return PrintError(name, "is there already; --force replaces it"), false;
  }
  Array<char> bytes;
  OpenFile<FileReader> file = files.OpenRead(path, Share::kReadWrite);
  if (!file || file->SizeBytes() > kLargestList ||
      !bytes.Resize(static_cast<size_t>(file->SizeBytes())) ||
      file->ReadAt(0, bytes.data(), bytes.size()) != ReadResult::kOk) {
    return PrintError(path, "cannot be read"), false;
  }
  FileReplacement out(files, name);
  if (!out || !WriteChanged(bytes, changes, out.file()) || !out.Commit()) {
    return PrintError(name, "cannot be written"), false;
  }
  Print(Stream::kOut, "written: ");
  Print(Stream::kOut, name);
  Print(Stream::kOut, "\n");
  return true;
}

int RepairLists(const Arguments& arguments) noexcept {
  DeviceFiles device(SystemFiles(), arguments.device);
  CardFiles card;
  if (!card.Search(arguments.device)) return PrintError(arguments.device, "no memory"), 1;
  int result = 0;
  for (const wchar_t* list : arguments) {
    const wchar_t* const path = device.DevicePath(list);
    ListFormat format;
    if (!path || !ListFormatOf(MediaKindOf(list), &format)) {
      PrintError(list, path ? "not a playlist" : "not in the device's folder");
      result = 1;
      continue;
    }
    Repair repair(device, card, path, format);
    if (!repair.Run()) result = 1;
    if (!repair.changes().empty() && !WriteMended(list, repair.changes(), arguments.forced)) {
      result = 1;
    }
  }
  return result;
}

}  // namespace

const Command kRepairCommand = {
    L"repair",
    "  repair [--force] --device FOLDER LIST...\n"
    "                         the lines of playlists whose files are not found, and the files of\n"
    "                         the same name on the device, whose files lie in FOLDER, the lists\n"
    "                         among them. Where there is one, or one in folders of the same "
    "names,\n"
    "                         it is taken into \"LIST (mended)\", which is written beside LIST; "
    "the\n"
    "                         list itself stays, and so does an older mended one without --force.\n"
    "                         Names beside the list stay names, all else becomes a whole path, as\n"
    "                         the player needs it. Code 1 when a line stays without its file\n",
    1,
    kAnyNumber,
    kForce | kDevice,
    kDevice,
    RepairLists};

}  // namespace kelvo::tool
