#include "playlist/m3u_writer.h"

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
  void WriteTo(FileWriter& file) noexcept {
    // The result is the creation's alone: a full disk leaves a short playlist.
    static_cast<void>(file.Write(bytes_, used_));
  }

 private:
  size_t used_ = 0;
  char bytes_[kLongestPath + 3];
};

void WriteTag(const TagBlock& tag, FileWriter& file) noexcept {
  Line line;
  line.Text("#EXTINF:-1,");  // the length is never known here
  line.Text(tag.artist);
  line.Text(" - ");
  line.Text(tag.title);
  line.Text("\r\n");
  line.WriteTo(file);
}

}  // namespace

bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list) noexcept {
  OpenFile<FileWriter> file = files.Create(path, Share::kNone);
  if (!file) return false;
  static_cast<void>(file->Write(kHeader, sizeof(kHeader) - 1));
  for (const MediaEntry& entry : list) {
    if (entry.tag) WriteTag(*entry.tag, *file);
    Line line;
    line.Path(entry.path.c_str());
    line.Text("\r\n");
    line.WriteTo(*file);
  }
  return true;
}

}  // namespace kelvo
