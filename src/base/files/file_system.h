// Every access to files goes through this interface: the platform's files in the library, a memory
// fake with faults in tests. Paths are wide, with backslashes, and NUL-terminated; a path of 260 or
// more characters is refused.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <utility>

#include "base/bytes/byte_source.h"

namespace kelvo {

// What other openers of the same file may do meanwhile.
enum class Share { kNone, kRead, kWrite, kReadWrite };

// Attribute bits, with the platform's values.
inline constexpr uint32_t kAttributeReadOnly = 0x01;
inline constexpr uint32_t kAttributeHidden = 0x02;
inline constexpr uint32_t kAttributeSystem = 0x04;
inline constexpr uint32_t kAttributeFolder = 0x10;
inline constexpr uint32_t kAttributeNormal = 0x80;

// An open file; Close() releases it and ends the object's life. Owned through OpenFile below.
class FileReader : public ByteSource {
 public:
  ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept final {
    size_t got;
    const ReadResult result = ReadSome(offset, dst, bytes, &got);
    return result != ReadResult::kOk || got == bytes ? result : ReadResult::kEnd;
  }
  virtual void Close() noexcept = 0;

 protected:
  ~FileReader() = default;
};

class FileWriter {
 public:
  // True when all bytes were written.
  [[nodiscard]] virtual bool Write(const void* data, size_t bytes) noexcept = 0;
  // True when all that was written has reached the medium.
  [[nodiscard]] virtual bool Flush() noexcept = 0;
  // Moves the write position to `distance` bytes before the end; false when the file is shorter.
  [[nodiscard]] virtual bool SeekFromEnd(uint32_t distance) noexcept = 0;
  virtual void Close() noexcept = 0;

 protected:
  ~FileWriter() = default;
};

// Owns an open FileReader or FileWriter.
template <class Handle>
class OpenFile {
 public:
  OpenFile() noexcept = default;
  explicit OpenFile(Handle* file) noexcept : file_(file) {}
  OpenFile(OpenFile&& other) noexcept : file_(std::exchange(other.file_, nullptr)) {}
  OpenFile& operator=(OpenFile&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
  }
  ~OpenFile() { Close(); }

  explicit operator bool() const noexcept { return file_ != nullptr; }
  Handle* operator->() const noexcept { return file_; }
  Handle& operator*() const noexcept { return *file_; }
  void Close() noexcept {
    if (Handle* file = std::exchange(file_, nullptr)) file->Close();
  }

 private:
  Handle* file_ = nullptr;
};

struct FolderEntry {
  const wchar_t* name;  // without folder; valid during the call only
  uint32_t attributes;
  bool is_folder() const noexcept { return (attributes & kAttributeFolder) != 0; }
};

class FolderVisitor {
 public:
  // False ends the listing.
  virtual bool Visit(const FolderEntry& entry) noexcept = 0;

 protected:
  ~FolderVisitor() = default;
};

class FileSystem {
 public:
  // An existing file; empty when it cannot be opened.
  virtual OpenFile<FileReader> OpenRead(const wchar_t* path, Share share) noexcept = 0;
  // An existing file, for writing in place.
  virtual OpenFile<FileWriter> OpenWrite(const wchar_t* path, Share share) noexcept = 0;
  // A new file, replacing an existing one.
  virtual OpenFile<FileWriter> Create(const wchar_t* path, Share share) noexcept = 0;

  // False when there is no such file or folder; *attributes is then untouched.
  virtual bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept = 0;
  virtual bool SetAttributes(const wchar_t* path, uint32_t attributes) noexcept = 0;
  virtual bool Delete(const wchar_t* path) noexcept = 0;
  // Nothing may be at `to`.
  virtual bool Move(const wchar_t* from, const wchar_t* to) noexcept = 0;
  // Moves a file to where another may be, which it replaces; neither may be open. Both are as
  // before when it fails; on a device that loses its power meanwhile only `from` may be left.
  virtual bool Replace(const wchar_t* from, const wchar_t* to) noexcept = 0;

  // Visits the entries that match `pattern` (folder, backslash, name with wildcards), in the order
  // of the file system, without "." and "..". False when the folder could not be listed.
  virtual bool List(const wchar_t* pattern, FolderVisitor& visitor) noexcept = 0;

  bool Exists(const wchar_t* path) noexcept {
    uint32_t attributes;
    return GetAttributes(path, &attributes);
  }

 protected:
  ~FileSystem() = default;
};

// The platform's files.
FileSystem& SystemFiles() noexcept;

}  // namespace kelvo
