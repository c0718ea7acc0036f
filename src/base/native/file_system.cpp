// Files of the build machine, for the command-line tool and native tests. Wide paths become UTF-8,
// backslashes become slashes; sharing is not enforced.
#include "base/files/file_system.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/memory/heap.h"
#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {
namespace {

class NativePath {
 public:
  explicit NativePath(const wchar_t* wide) noexcept {
    fits_ = WideLength(wide) < kTextCapacity;
    WideToUtf8(fits_ ? wide : L"", path_, sizeof(path_));
    for (char* c = path_; *c; ++c) {
      if (*c == '\\') *c = '/';
    }
  }
  explicit operator bool() const noexcept { return fits_; }
  const char* c_str() const noexcept { return path_; }
  char* data() noexcept { return path_; }

 private:
  bool fits_;
  char path_[kTextCapacity * 3];
};

// Unbuffered, like the platform's own files: callers read in pieces of the size they need.
class NativeReader final : public FileReader {
 public:
  NativeReader(int file, uint64_t bytes) noexcept : file_(file), bytes_(bytes) {}
  uint64_t SizeBytes() noexcept override { return bytes_; }
  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    *got = 0;
    if (offset >= bytes_) return ReadResult::kOk;
    size_t total = 0;
    while (total < bytes) {
      const ssize_t count = pread(file_, static_cast<char*>(dst) + total, bytes - total,
                                  static_cast<off_t>(offset + total));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return ReadResult::kFailed;
      if (count == 0) break;
      total += static_cast<size_t>(count);
    }
    *got = total;
    return ReadResult::kOk;
  }
  void Close() noexcept override {
    close(file_);
    HeapDelete(this);
  }

 private:
  int file_;
  uint64_t bytes_;
};

class NativeWriter final : public FileWriter {
 public:
  bool Open(const char* path, int flags) noexcept {
    file_ = open(path, O_WRONLY | O_CLOEXEC | flags, 0666);
    return file_ >= 0;
  }
  bool Write(const void* data, size_t bytes) noexcept override {
    for (size_t done = 0; done < bytes;) {
      const ssize_t count = write(file_, static_cast<const char*>(data) + done, bytes - done);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      done += static_cast<size_t>(count);
    }
    return true;
  }
  bool Flush() noexcept override { return fsync(file_) == 0; }
  bool SeekFromEnd(uint32_t distance) noexcept override {
    return lseek(file_, -static_cast<off_t>(distance), SEEK_END) >= 0;
  }
  void Close() noexcept override {
    close(file_);
    HeapDelete(this);
  }

 private:
  int file_ = -1;
};

class NativeFiles final : public FileSystem {
 public:
  OpenFile<FileReader> OpenRead(const wchar_t* wide, Share) noexcept override {
    const NativePath path(wide);
    // Without blocking: a pipe of that name is no file, but is not to be waited for either.
    const int file = path ? open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
    if (file < 0) return {};
    struct stat info;
    NativeReader* reader = nullptr;
    if (fstat(file, &info) == 0 && S_ISREG(info.st_mode)) {
      reader = HeapNew<NativeReader>(file, static_cast<uint64_t>(info.st_size));
    }
    if (!reader) close(file);
    return OpenFile<FileReader>(reader);
  }
  OpenFile<FileWriter> OpenWrite(const wchar_t* path, Share) noexcept override {
    return Writer(path, 0);
  }
  OpenFile<FileWriter> Create(const wchar_t* path, Share) noexcept override {
    return Writer(path, O_CREAT | O_TRUNC);
  }
  bool GetAttributes(const wchar_t* wide, uint32_t* attributes) noexcept override {
    const NativePath path(wide);
    struct stat info;
    if (!path || stat(path.c_str(), &info) != 0) return false;
    *attributes = S_ISDIR(info.st_mode)      ? kAttributeFolder
                  : (info.st_mode & S_IWUSR) ? kAttributeNormal
                                             : kAttributeReadOnly;
    return true;
  }
  bool SetAttributes(const wchar_t* wide, uint32_t attributes) noexcept override {
    const NativePath path(wide);
    return path && chmod(path.c_str(), attributes & kAttributeReadOnly ? 0444 : 0644) == 0;
  }
  bool Delete(const wchar_t* wide) noexcept override {
    const NativePath path(wide);
    return path && unlink(path.c_str()) == 0;
  }
  bool Move(const wchar_t* from_wide, const wchar_t* to_wide) noexcept override {
    const NativePath from(from_wide);
    const NativePath to(to_wide);
    return from && to && !Exists(to_wide) && rename(from.c_str(), to.c_str()) == 0;
  }
  bool Replace(const wchar_t* from_wide, const wchar_t* to_wide) noexcept override {
    const NativePath from(from_wide);
    const NativePath to(to_wide);
    return from && to && rename(from.c_str(), to.c_str()) == 0;
  }
  bool List(const wchar_t* pattern, FolderVisitor& visitor) noexcept override {
    NativePath folder(pattern);
    if (!folder) return false;
    char wildcard[kTextCapacity * 3];
    if (!SplitPattern(folder.data(), wildcard, sizeof(wildcard))) return false;
    DIR* listing = opendir(folder.c_str());
    if (!listing) return false;
    while (const dirent* entry = readdir(listing)) {
      const char* name = entry->d_name;
      if (name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0))) continue;
      if (fnmatch(wildcard, name, FNM_CASEFOLD) != 0) continue;
      wchar_t wide_name[kTextCapacity];
      Utf8ToUtf16(name, wide_name, kTextCapacity);
      struct stat info;
      const bool is_folder = fstatat(dirfd(listing), name, &info, 0) == 0 && S_ISDIR(info.st_mode);
      if (!visitor.Visit({wide_name, is_folder ? kAttributeFolder : kAttributeNormal})) break;
    }
    closedir(listing);
    return true;
  }

 private:
  static OpenFile<FileWriter> Writer(const wchar_t* wide, int flags) noexcept {
    const NativePath path(wide);
    // Memory first: a file is not replaced for nothing.
    HeapPtr<NativeWriter> writer(HeapNew<NativeWriter>());
    if (!path || !writer || !writer->Open(path.c_str(), flags)) return {};
    return OpenFile<FileWriter>(writer.Release());
  }

  // "/folder/*.*" becomes "/folder" and "*" ("*.*" matches every name on the device).
  static bool SplitPattern(char* path, char* wildcard, size_t capacity) noexcept {
    char* slash = nullptr;
    for (char* c = path; *c; ++c) {
      if (*c == '/') slash = c;
    }
    const char* name = slash ? slash + 1 : path;
    const bool all = name[0] == '*' && name[1] == '.' && name[2] == '*' && name[3] == 0;
    const int length = snprintf(wildcard, capacity, "%s", all ? "*" : name);
    if (slash) {
      slash[slash == path ? 1 : 0] = 0;
    } else {
      path[0] = '.';
      path[1] = 0;
    }
    return length >= 0 && static_cast<size_t>(length) < capacity;
  }
};

NativeFiles g_files;

}  // namespace

FileSystem& SystemFiles() noexcept {
  return g_files;
}

}  // namespace kelvo
