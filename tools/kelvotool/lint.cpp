#include "tools/kelvotool/lint.h"

#include <string.h>

#include "tools/kelvotool/console.h"

namespace kelvo::tool {
namespace {

constexpr int kDeepest = 200;

bool Has(const wchar_t* text, const char* part) noexcept {
  const size_t length = strlen(part);
  for (; *text != 0; ++text) {
    size_t i = 0;
    while (i < length && text[i] == static_cast<wchar_t>(part[i])) ++i;
    if (i == length) return true;
  }
  return false;
}

// ".." as a folder, not as the end of a name.
bool HasParentFolder(const wchar_t* path) noexcept {
  for (const wchar_t* part = path;; ++part) {
    if (part[0] == '.' && part[1] == '.' && part[2] == '\\') return true;
    part = FindWide(part, L'\\');
    if (!part) return false;
  }
}

// "File" with a number and an equals sign, in any case.
bool IsNumberedFile(const TextLine& line) noexcept {
  if (line.length < 6 || !EqualAsciiNoCase(line.text, "File", 4)) return false;
  size_t i = 4;
  while (i < line.length && line.text[i] >= '0' && line.text[i] <= '9') ++i;
  return i > 4 && i < line.length && line.text[i] == '=';
}

bool HasReference(const TextLine& line) noexcept {
  for (size_t i = 0; i + 4 <= line.length; ++i) {
    if (EqualAsciiNoCase(line.text + i, "<ref", 4)) return true;
  }
  return false;
}

}  // namespace

struct Lint::Place {
  const wchar_t* path;
  int depth;
  int line_number;
  ListFormat format;
  PlsKey key;
  ListFolder folder;
  OpenFile<FileReader> file;
  LineReader lines;
  wchar_t resolved[kTextCapacity];
  wchar_t entry_path[kTextCapacity];
};

bool Lint::Check(const wchar_t* path) noexcept {
  clean_ = true;
  chain_ = ChainGuard();
  CheckList(path, 0);
  return clean_;
}

void Lint::Complain(const wchar_t* path, const char* what) noexcept {
  clean_ = false;
  PrintError(path, what);
}

void Lint::CheckList(const wchar_t* path, int depth) noexcept {
  HeapPtr<Place> place(HeapNew<Place>());
  HeapText copy;
  if (!place || !copy.Assign(path) || !seen_.Append(std::move(copy))) {
    return Complain(path, "no memory");
  }
  if (!ListFormatOf(MediaKindOf(path), &place->format)) return Complain(path, "not a playlist");
  if (!place->folder.Set(path, place->resolved)) {
    return Complain(path, "the code page does not hold its name");
  }
  place->file = files_.OpenRead(place->resolved, Share::kRead);
  if (!place->file) return Complain(path, "cannot be opened");
  if (!chain_.Enter(path)) return Complain(path, "too many playlists");
  place->path = path;
  place->depth = depth;
  place->line_number = 1;
  place->lines.Start(&*place->file, 0);
  TextLine line;
  while (place->lines.Next(&line)) {
    CheckLine(place.get(), line);
    if (!line.continues) ++place->line_number;
  }
  chain_.Leave();
}

void Lint::CheckLine(Place* place, const TextLine& line) noexcept {
  ListEntry entry;
  if (!FindEntry(place->format, line, &place->key, &entry)) return CheckSkipped(place, line);
  if (entry.length == 0) return;
  if (line.cut) return Report(*place, line, "longer than 259 characters, read in pieces");
  size_t length;
  if (!MakeEntryPath(entry, place->folder, place->entry_path, &length)) {
    return Report(*place, line, "longer than a path may be");
  }
  CheckEntry(place, line, place->entry_path);
}

void Lint::CheckSkipped(Place* place, const TextLine& line) noexcept {
  if (place->format == ListFormat::kPls && IsNumberedFile(line)) {
    Report(*place, line, "gap in the numbering");
  } else if (place->format == ListFormat::kAsx && HasReference(line)) {
    Report(*place, line, "not of the form <ref href=\"...\">");
  }
}

void Lint::CheckEntry(Place* place, const TextLine& line, const wchar_t* path) noexcept {
  const MediaKind kind = MediaKindOf(path);
  ListFormat nested;
  if (Has(path, "://")) {
    Report(*place, line, "a URL");
  } else if (kind == MediaKind::kNone) {
    Report(*place, line, "no kind");
  } else if (Has(path, "/")) {
    Report(*place, line, "forward slashes do not separate folders");
  } else if (HasParentFolder(path)) {
    Report(*place, line, "\"..\" is not resolved");
  } else if (!files_.Exists(path)) {
    Report(*place, line, "no such file");
  } else if (!ListFormatOf(kind, &nested)) {
    return;
  } else if (chain_.IsOpen(path)) {
    Report(*place, line, "a list inside itself");
  } else if (place->depth == kDeepest) {
    Report(*place, line, "nested too deeply to be checked");
  } else {
    for (const HeapText& seen : seen_) {
      if (EqualNoCase(seen.c_str(), path)) return;
    }
    CheckList(path, place->depth + 1);
  }
}

void Lint::Report(const Place& place, const TextLine& line, const char* why) noexcept {
  clean_ = false;
  Print(Stream::kOut, place.path);
  Print(Stream::kOut, ":");
  PrintNumber(Stream::kOut, place.line_number);
  Print(Stream::kOut, ": ");
  Print(Stream::kOut, why);
  Print(Stream::kOut, ": ");
  PrintAnsi(Stream::kOut, line.text, line.length);
  Print(Stream::kOut, "\n");
}

}  // namespace kelvo::tool
