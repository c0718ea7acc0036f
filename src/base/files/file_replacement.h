#pragma once

#include "base/files/file_system.h"
#include "base/text/wide.h"

namespace kelvo {

// Writes a file anew without risking the one that is there. The bytes go into a file beside it,
// "list.m3~" for "list.m3u"; when all have arrived, that is renamed to "list.m3$", whose presence
// says that it is whole, and then takes the old one's place. Whatever fails or ends in between, the
// old file or the whole new one is left.
class FileReplacement {
 public:
  // `path` is borrowed. A folder or a read-only file is not replaced.
  FileReplacement(FileSystem& files, const wchar_t* path) noexcept;
  ~FileReplacement() { Discard(); }
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // Whether there is a file to write to; without one only destruction is allowed.
  explicit operator bool() const noexcept { return static_cast<bool>(file_); }
  FileWriter& file() noexcept { return *file_; }

  // Puts the new file in the old one's place. Only for a file that was written completely, once.
  // False when the old one is still there.
  [[nodiscard]] bool Commit() noexcept;

  // Where the newest whole content of `path` is: there, after what an interrupted Commit() left
  // undone has been done, or beside it when that fails again. Empty when no file has such a path.
  static void FindNewest(FileSystem& files, const wchar_t* path,
                         wchar_t (&newest)[kTextCapacity]) noexcept;

 private:
  void Discard() noexcept;

  FileSystem& files_;
  const wchar_t* path_;
  wchar_t unfinished_[kTextCapacity];
  OpenFile<FileWriter> file_;
};

}  // namespace kelvo
