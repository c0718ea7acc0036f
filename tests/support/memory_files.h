// A file system in memory: logs every call, and fails the n-th one on demand. Names are UTF-8 and
// compared without case (ASCII); listings are in the order in which the names were put. As on the
// device, a path of 260 characters or more cannot be created or listed, a new file needs its folder
// (which is there as soon as a file is in it), and what is open cannot be moved or deleted.
#pragma once

#include <string>
#include <vector>

#include "base/files/file_system.h"
#include "tests/support/faults.h"

namespace kelvo::test {

class MemoryFiles final : public FileSystem {
 public:
  struct File {
    std::string path;
    std::string bytes;
    uint32_t attributes;
    bool unreadable;
    bool locked = false;  // cannot be opened for writing
  };

  File& Put(const std::string& path, const std::string& bytes,
            uint32_t attributes = kAttributeNormal);
  void PutFolder(const std::string& path) { Put(path, "", kAttributeFolder); }
  // Null when there is none. Valid until files are added or removed.
  File* Find(const std::string& path);
  const std::vector<File>& files() const { return files_; }
  // The bytes of a file, which is made when there is none. Valid until files are added or removed.
  std::string& operator[](const std::string& path);

  // Lets `successes` calls through (reads and writes count too) and fails the next one, or all from
  // then on; negative: none. Only calls whose line in the log begins with `kind` count. Opening
  // also fails when memory is out.
  void FailAfter(long successes, bool from_then_on = false, const std::string& kind = "");
  bool fault_triggered() const { return faults_.triggered(); }

  // One line a call: "open C:\a.mp3", "read 128", "write 10", "create ...", "attributes ...".
  std::vector<std::string> log;
  Share last_share = Share::kRead;  // of the last opening
  int open_now = 0;
  int most_open = 0;
  // Called before each call with its log line; may change the files.
  void (*before)(MemoryFiles& files, const std::string& call) = nullptr;

  OpenFile<FileReader> OpenRead(const wchar_t* path, Share share) noexcept override;
  OpenFile<FileWriter> OpenWrite(const wchar_t* path, Share share) noexcept override;
  OpenFile<FileWriter> Create(const wchar_t* path, Share share) noexcept override;
  bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept override;
  bool SetAttributes(const wchar_t* path, uint32_t attributes) noexcept override;
  bool Delete(const wchar_t* path) noexcept override;
  bool Move(const wchar_t* from, const wchar_t* to) noexcept override;
  bool Replace(const wchar_t* from, const wchar_t* to) noexcept override;
  bool List(const wchar_t* pattern, FolderVisitor& visitor) noexcept override;

 private:
  class Reader;
  class Writer;
  // Logs the call; false when it is the one that fails.
  bool Begin(const std::string& call);
  OpenFile<FileWriter> MakeWriter(const std::string& path);
  void Opened(const std::string& path);
  void Closed(const std::string& path);
  bool IsOpen(const std::string& path) const;
  bool HasFolder(const std::string& path) const;

  std::vector<File> files_;
  std::vector<std::string> open_;
  Countdown faults_;
  std::string failing_kind_;
};

}  // namespace kelvo::test
