#include "tools/kelvotool/lint.h"

#include <string.h>

#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/device_files.h"

namespace kelvo::tool {
namespace {

bool Has(const wchar_t* text, const char* part) noexcept {
  const size_t length = strlen(part);
  for (; *text != 0; ++text) {
    size_t i = 0;
    while (i < length && text[i] == static_cast<wchar_t>(part[i])) ++i;
    if (i == length) return true;
  }
  return false;
}

// How often a part occurs, in any case.
int Count(const TextLine& line, const char* part) noexcept {
  const size_t length = strlen(part);
  int count = 0;
  for (size_t i = 0; i + length <= line.length; ++i) {
    count += EqualAsciiNoCase(line.text + i, part, length);
  }
  return count;
}

// ".." as a folder, not as the end of a name.
bool HasParentFolder(const wchar_t* path) noexcept {
  for (const wchar_t* part = path;; ++part) {
    if (part[0] == '.' && part[1] == '.' && part[2] == '\\') return true;
    part = FindWide(part, L'\\');
    if (!part) return false;
  }
}

bool IsAbsolute(const wchar_t* path) noexcept {
  return path[0] == '\\' || (path[0] != 0 && path[1] == ':');
}

enum class PlsKeyForm { kNone, kExact, kWithBlanks, kIncomplete };

// How much of "FileN=" there is, in any case.
PlsKeyForm FormOfKey(const TextLine& line) noexcept {
  size_t at = 0;
  const auto skip_blanks = [&] {
    const size_t from = at;
    while (at < line.length && (line.text[at] == ' ' || line.text[at] == '\t')) ++at;
    return at > from;
  };
  bool blanks = skip_blanks();
  if (line.length - at < 4 || !EqualAsciiNoCase(line.text + at, "File", 4))
    return PlsKeyForm::kNone;
  at += 4;
  const size_t digits = at;
  while (at < line.length && line.text[at] >= '0' && line.text[at] <= '9') ++at;
  if (at == digits) return PlsKeyForm::kIncomplete;
  blanks |= skip_blanks();
  if (at == line.length || line.text[at] != '=') return PlsKeyForm::kIncomplete;
  return blanks ? PlsKeyForm::kWithBlanks : PlsKeyForm::kExact;
}

// Why a line that names nothing is hardly meant so; null for comments, titles and the like.
const char* LineProblem(const ListPosition& from) noexcept {
  switch (MediaKindOf(from.list)) {
    case MediaKind::kPls:
      switch (FormOfKey(from.text)) {
        case PlsKeyForm::kNone:
          return nullptr;
        case PlsKeyForm::kExact:
          return "not the next number";
        case PlsKeyForm::kWithBlanks:
          return "blanks around the key";
        case PlsKeyForm::kIncomplete:
          return "not of the form FileN=PATH";
      }
      return nullptr;
    case MediaKind::kAsx:
      if (Count(from.text, "<ref") + Count(from.text, "<entryref") == 0) return nullptr;
      return "not of the form <ref href=\"...\">";
    default:
      return nullptr;
  }
}

}  // namespace

bool Lint::Check(const wchar_t* path) noexcept {
  clean_ = true;
  ExpandPath(files_, path, this, *this);
  return clean_;
}

bool Lint::WasSeen(const wchar_t* path) const noexcept {
  for (const HeapText& seen : seen_) {
    if (EqualNoCase(seen.c_str(), path)) return true;
  }
  return false;
}

bool Lint::Enter(const wchar_t* path) noexcept {
  HeapText copy;
  if (WasSeen(path) || !copy.Assign(path) || !chain_.Enter(path)) return false;
  if (seen_.Append(std::move(copy))) return true;
  chain_.Leave();
  return false;
}

void Lint::AddMedia(MediaKind, const wchar_t* path, const ListPosition* from) noexcept {
  if (!from) return Complain(path, "not a playlist");
  if (const char* why = PathProblem(path, *from)) Report(*from, why);
  if (MediaKindOf(from->list) == MediaKind::kAsx && Count(from->text, "<ref") > 1) {
    Report(*from, "only the first reference of a line is taken");
  }
}

void Lint::Skip(Skipped why, const wchar_t* path, const ListPosition* from) noexcept {
  if (from) {
    if (const char* what = SkipProblem(why, path, *from)) Report(*from, what);
  } else if (why == Skipped::kNoKind) {
    Complain(path, "not a playlist");
  } else if (why == Skipped::kNameNotInAnsi) {
    Complain(path, "the code page does not hold its name");
  } else if (why == Skipped::kUnreadable) {
    Complain(path, "cannot be opened");
  } else if (!WasSeen(path)) {
    Complain(path, "no memory");
  }
}

const char* Lint::PathProblem(const wchar_t* path, const ListPosition& from) noexcept {
  if (Has(path, "://")) return "a URL";
  if (Has(path, "/")) return "forward slashes do not separate folders";
  if (HasParentFolder(path)) return "\"..\" is not resolved";
  if (IsAbsolute(from.list) && !IsAbsolute(path)) return "a relative path";
  return files_.Exists(path) ? nullptr : "no such file";
}

const char* Lint::SkipProblem(Skipped why, const wchar_t* path, const ListPosition& from) noexcept {
  if (from.text.continues) return "longer than 259 characters, read in pieces";
  switch (why) {
    case Skipped::kLine:
      return LineProblem(from);
    case Skipped::kTooLong:
      return "longer than a path may be";
    case Skipped::kNoKind:
      if (from.text.length == 0) return nullptr;
      if (Has(path, "://")) return "a URL";
      if (from.is_rest) return "the rest of a line of more than 259 characters";
      return path[0] == 0 ? "without a value" : "no kind";
    case Skipped::kNameNotInAnsi:
      return "the code page does not hold its name";
    case Skipped::kRefused:
      if (chain_.IsOpen(path)) return "a list inside itself";
      return WasSeen(path) ? nullptr : "more than the player takes from lists in lists";
    case Skipped::kUnreadable: {
      const char* what = PathProblem(path, from);
      return what ? what : "cannot be opened";
    }
    case Skipped::kBehindTextsEnd:
      return "what follows is behind an end-of-text character";
  }
  return nullptr;
}

void Lint::Complain(const wchar_t* path, const char* what) noexcept {
  clean_ = false;
  PrintError(path, what);
}

void Lint::Report(const ListPosition& from, const char* why) noexcept {
  clean_ = false;
  Print(Stream::kOut, from.list);
  Print(Stream::kOut, ":");
  PrintNumber(Stream::kOut, static_cast<int>(from.line));
  Print(Stream::kOut, ": ");
  Print(Stream::kOut, why);
  Print(Stream::kOut, ": ");
  PrintAnsi(Stream::kOut, from.text.text, from.text.length);
  Print(Stream::kOut, "\n");
}

namespace {

int CheckLists(const Arguments& arguments) noexcept {
  DeviceFiles device(SystemFiles(), arguments.device);
  Lint lint(arguments.device ? device : SystemFiles());
  int result = 0;
  for (const wchar_t* list : arguments) {
    const wchar_t* const path = arguments.device ? device.DevicePath(list) : list;
    if (!path) PrintError(list, "not in the device's folder");
    if (!path || !lint.Check(path)) result = 1;
  }
  return result;
}

}  // namespace

const Command kLintCommand = {
    L"lint",
    "  lint [--device FOLDER] LIST...\n"
    "                         the lines of playlists that the player drops or takes literally,\n"
    "                         and why; FOLDER is where a device's files lie, the lists among "
    "them\n",
    1,
    kAnyNumber,
    kDevice,
    0,
    CheckLists};

}  // namespace kelvo::tool
