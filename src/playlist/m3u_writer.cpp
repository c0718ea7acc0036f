#include "playlist/playlist_files.h"

#include "base/files/file_replacement.h"
#include "base/text/ansi.h"

namespace kelvo {
namespace {

// The colon is what this library has always written; its readers skip the line.
constexpr char kHeader[] = "#EXTM3U:\r\n";
constexpr size_t kLongestPath = 255;  // bytes

// One line, written at once; the longest part of one is a path. What would end it in the middle is
// a blank: the rest of a title must not become an entry.
class Line {
 public:
  void Text(const char* text) noexcept {
    for (; *text != 0; ++text) bytes_[used_++] = InLine(*text);
  }
  void Path(const wchar_t* path) noexcept {
    const size_t end =
        used_ + WideToAnsi(path, kLongestPath, bytes_ + used_, kLongestPath, nullptr);
    for (; used_ < end; ++used_) bytes_[used_] = InLine(bytes_[used_]);
  }
  [[nodiscard]] bool WriteTo(FileWriter& file) noexcept {
    bytes_[used_++] = '\r';
    bytes_[used_++] = '\n';
    return file.Write(bytes_, used_);
  }

 private:
  static char InLine(char c) noexcept { return c == '\r' || c == '\n' ? ' ' : c; }

  size_t used_ = 0;
  char bytes_[kLongestPath + 3];
};

[[nodiscard]] bool WriteTag(const TagBlock& tag, FileWriter& file) noexcept {
  Line line;
  line.Text("#EXTINF:-1,");  // the length is never known here
  line.Text(tag.artist);
  line.Text(" - ");
  line.Text(tag.title);
  return line.WriteTo(file);
}

// Each line is tried: where a long one does not fit, a short one may.
[[nodiscard]] bool WriteEntry(const MediaEntry& entry, FileWriter& file) noexcept {
  const bool ok = !entry.tag || WriteTag(*entry.tag, file);
  Line line;
  line.Path(entry.path.c_str());
  return line.WriteTo(file) && ok;
}

[[nodiscard]] bool WriteLines(const EntryList& list, FileWriter& file) noexcept {
  bool ok = file.Write(kHeader, sizeof(kHeader) - 1);
  for (const MediaEntry& entry : list) ok = WriteEntry(entry, file) && ok;
  return ok;
}

}  // namespace

bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list,
              bool* complete) noexcept {
  bool created, ok;
  if (files.Exists(path)) {
    FileReplacement replacement(files, path);
    created = static_cast<bool>(replacement);
    ok = created && WriteLines(list, replacement.file()) && replacement.Commit();
  } else {
    // Some of the list is better than none of it.
    const OpenFile<FileWriter> file = files.Create(path, Share::kNone);
    created = static_cast<bool>(file);
    ok = created && WriteLines(list, *file);
  }
  if (complete) *complete = ok;
  return created;
}

}  // namespace kelvo
