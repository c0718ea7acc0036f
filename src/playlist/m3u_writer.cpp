#include "playlist/playlist_files.h"

#include "base/files/file_replacement.h"
#include "base/text/ansi.h"

namespace kelvo {
namespace {

// The colon is what this library has always written; its readers skip the line.
constexpr char kHeader[] = "#EXTM3U:\r\n";
constexpr size_t kLongestPath = 255;  // bytes

// One line, written at once; the longest part of one is a path.
class Line {
 public:
  void Text(const char* text) noexcept {
    while (*text != 0) bytes_[used_++] = *text++;
  }
  void Path(const wchar_t* path) noexcept {
    used_ += WideToAnsi(path, kLongestPath, bytes_ + used_, kLongestPath, nullptr);
  }
  [[nodiscard]] bool WriteTo(FileWriter& file) const noexcept { return file.Write(bytes_, used_); }

 private:
  size_t used_ = 0;
  char bytes_[kLongestPath + 3];
};

[[nodiscard]] bool WriteTag(const TagBlock& tag, FileWriter& file) noexcept {
  Line line;
  line.Text("#EXTINF:-1,");  // the length is never known here
  line.Text(tag.artist);
  line.Text(" - ");
  line.Text(tag.title);
  line.Text("\r\n");
  return line.WriteTo(file);
}

[[nodiscard]] bool WriteEntry(const MediaEntry& entry, FileWriter& file) noexcept {
  if (entry.tag && !WriteTag(*entry.tag, file)) return false;
  Line line;
  line.Path(entry.path.c_str());
  line.Text("\r\n");
  return line.WriteTo(file);
}

}  // namespace

bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list,
              bool* complete) noexcept {
  FileReplacement replacement(files, path);
  bool ok = replacement && replacement.file().Write(kHeader, sizeof(kHeader) - 1);
  const bool created = static_cast<bool>(replacement);
  for (const MediaEntry& entry : list) ok = ok && WriteEntry(entry, replacement.file());
  ok = ok && replacement.Commit();
  if (complete) *complete = ok;
  return created;
}

}  // namespace kelvo
