#pragma once

#include "base/files/file_system.h"
#include "base/text/wide.h"

namespace kelvo::tool {

// A device's files as they lie below a folder of this machine, for opening: "\Storage Card\a.mp3"
// is that file below the root, whatever its letters' case. Every path is the device's.
class DeviceFiles final : public FileSystem {
 public:
  DeviceFiles(FileSystem& files, const wchar_t* root) noexcept : files_(files), root_(root) {}

  // Where the last path that was opened or asked about lies on this machine, in the folders' own
  // spelling; as long as that was found.
  const wchar_t* found() const noexcept { return found_; }
  // The device's name of a file that is named below the root; null when it is not.
  const wchar_t* DevicePath(const wchar_t* path) const noexcept;

  OpenFile<FileReader> OpenRead(const wchar_t* path, Share share) noexcept override;
  bool GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept override;

  OpenFile<FileWriter> OpenWrite(const wchar_t*, Share) noexcept override { return {}; }
  OpenFile<FileWriter> Create(const wchar_t*, Share) noexcept override { return {}; }
  bool SetAttributes(const wchar_t*, uint32_t) noexcept override { return false; }
  bool Delete(const wchar_t*) noexcept override { return false; }
  bool Move(const wchar_t*, const wchar_t*) noexcept override { return false; }
  bool Replace(const wchar_t*, const wchar_t*) noexcept override { return false; }
  bool List(const wchar_t*, FolderVisitor&) noexcept override { return false; }

 private:
  // The file of that device path, in `found_`; false when there is none.
  bool Find(const wchar_t* path) noexcept;
  // Appends "\NAME" as the folder spells the name.
  bool Descend(const wchar_t* name, size_t length) noexcept;

  FileSystem& files_;
  const wchar_t* root_;
  wchar_t found_[kTextCapacity];
};

}  // namespace kelvo::tool
