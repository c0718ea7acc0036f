#include "base/files/file_system.h"

#include <windows.h>

#include "base/memory/heap.h"
#include "base/text/wide.h"
#include "base/windows/platform.h"
#include "base/windows/unique_handle.h"

namespace kelvo {
namespace {

DWORD ShareMode(Share share) noexcept {
  switch (share) {
    case Share::kRead:
      return FILE_SHARE_READ;
    case Share::kWrite:
      return FILE_SHARE_WRITE;
    case Share::kReadWrite:
      return FILE_SHARE_READ | FILE_SHARE_WRITE;
    case Share::kNone:
      break;
  }
  return 0;
}

bool Fits(const wchar_t* path) noexcept {
  return WideLength(path) < kTextCapacity;
}

class WindowsReader final : public FileReader {
 public:
  WindowsReader(UniqueFile file, uint64_t bytes) noexcept : file_(std::move(file)), bytes_(bytes) {}

  uint64_t SizeBytes() noexcept override { return bytes_; }

  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    *got = 0;
    if (offset >= bytes_) return ReadResult::kOk;
    if (offset != position_ && !Seek(offset)) return ReadResult::kFailed;
    size_t total = 0;
    while (total < bytes) {
      const size_t left = bytes - total;
      const DWORD wanted = left < kChunk ? static_cast<DWORD>(left) : kChunk;
      DWORD count = 0;
      if (!ReadFile(file_.get(), static_cast<char*>(dst) + total, wanted, &count, nullptr)) {
        position_ = kUnknown;
        return ReadResult::kFailed;
      }
      total += count;
      if (count < wanted) break;
    }
    position_ = offset + total;
    *got = total;
    return ReadResult::kOk;
  }

  void Close() noexcept override { HeapDelete(this); }

 private:
  static constexpr DWORD kChunk = 1u << 30;
  static constexpr uint64_t kUnknown = ~uint64_t{0};

  bool Seek(uint64_t offset) noexcept {
    LONG high = static_cast<LONG>(offset >> 32);
    SetLastError(NO_ERROR);
    const DWORD low = SetFilePointer(file_.get(), static_cast<LONG>(static_cast<uint32_t>(offset)),
                                     &high, FILE_BEGIN);
    if (low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR) {
      position_ = kUnknown;
      return false;
    }
    position_ = offset;
    return true;
  }

  UniqueFile file_;
  uint64_t bytes_;
  uint64_t position_ = 0;
};

class WindowsWriter final : public FileWriter {
 public:
  bool Take(UniqueFile file) noexcept {
    file_ = std::move(file);
    return static_cast<bool>(file_);
  }

  bool Write(const void* data, size_t bytes) noexcept override {
    DWORD written = 0;
    return bytes <= 0xFFFFFFFFu &&
           WriteFile(file_.get(), data, static_cast<DWORD>(bytes), &written, nullptr) &&
           written == bytes;
  }

  // A card's driver may have nothing to flush.
  bool Flush() noexcept override {
    return FlushFileBuffers(file_.get()) || GetLastError() == ERROR_NOT_SUPPORTED ||
           GetLastError() == ERROR_CALL_NOT_IMPLEMENTED;
  }

  bool SeekFromEnd(uint32_t distance) noexcept override {
    if (distance > 0x7FFFFFFFu) return false;
    SetLastError(NO_ERROR);
    const DWORD low = SetFilePointer(file_.get(), -static_cast<LONG>(distance), nullptr, FILE_END);
    return low != INVALID_SET_FILE_POINTER || GetLastError() == NO_ERROR;
  }

  void Close() noexcept override { HeapDelete(this); }

 private:
  UniqueFile file_;
};

class WindowsFiles final : public FileSystem {
 public:
  OpenFile<FileReader> OpenRead(const wchar_t* path, Share share) noexcept override {
    UniqueFile file = Open(path, GENERIC_READ, share, OPEN_EXISTING);
    if (!file) return {};
    DWORD high = 0;
    SetLastError(NO_ERROR);
    const DWORD low = GetFileSize(file.get(), &high);
    if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR) return {};
    const uint64_t bytes = static_cast<uint64_t>(high) << 32 | low;
    return OpenFile<FileReader>(HeapNew<WindowsReader>(std::move(file), bytes));
  }

  OpenFile<FileWriter> OpenWrite(const wchar_t* path, Share share) noexcept override {
    return OpenWriter(path, share, OPEN_EXISTING);
  }

  OpenFile<FileWriter> Create(const wchar_t* path, Share share) noexcept override {
    return OpenWriter(path, share, CREATE_ALWAYS);
  }

  bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept override {
    if (!Fits(path)) return false;
    const DWORD found = GetFileAttributesW(path);
    if (found == 0xFFFFFFFFu) return false;
    *attributes = found;
    return true;
  }

  bool SetAttributes(const wchar_t* path, uint32_t attributes) noexcept override {
    return Fits(path) && SetFileAttributesW(path, attributes);
  }

  bool Delete(const wchar_t* path) noexcept override { return Fits(path) && DeleteFileW(path); }

  bool Move(const wchar_t* from, const wchar_t* to) noexcept override {
    return Fits(from) && Fits(to) && MoveFileW(from, to);
  }

  bool Replace(const wchar_t* from, const wchar_t* to) noexcept override {
    return Fits(from) && Fits(to) && ReplaceByMoving(from, to);
  }

  bool List(const wchar_t* pattern, FolderVisitor& visitor) noexcept override {
    if (!Fits(pattern)) return false;
    // On the heap: visitors list folders inside one another, more than a device's stack would hold.
    const HeapPtr<WIN32_FIND_DATAW> found(HeapNew<WIN32_FIND_DATAW>());
    if (!found) return false;
    UniqueFind find(FindFirstFileW(pattern, found.get()));
    if (!find) return false;
    do {
      // The device lists no "." and "..", the desktop does.
      const wchar_t* name = found->cFileName;
      if (CompareWide(name, L".") == 0 || CompareWide(name, L"..") == 0) continue;
      if (!visitor.Visit({name, found->dwFileAttributes})) break;
    } while (FindNextFileW(find.get(), found.get()));
    return true;
  }

 private:
  static UniqueFile Open(const wchar_t* path, DWORD access, Share share, DWORD how) noexcept {
    if (!Fits(path)) return {};
    return UniqueFile(
        CreateFileW(path, access, ShareMode(share), nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr));
  }

  static OpenFile<FileWriter> OpenWriter(const wchar_t* path, Share share, DWORD how) noexcept {
    // Memory first: a file is not replaced for nothing.
    HeapPtr<WindowsWriter> writer(HeapNew<WindowsWriter>());
    if (!writer || !writer->Take(Open(path, GENERIC_WRITE, share, how))) return {};
    return OpenFile<FileWriter>(writer.Release());
  }
};

WindowsFiles g_files;

}  // namespace

FileSystem& SystemFiles() noexcept {
  return g_files;
}

}  // namespace kelvo
