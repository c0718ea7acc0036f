#pragma once

#include "base/files/file_system.h"
#include "kelvo/skin_reader.h"

namespace kelvo {

// Feature 5. One object, static in the library; user-interface thread only.
class SkinReaderFeature final : public SkinReader {
 public:
  // Borrowed; must outlive the object.
  explicit SkinReaderFeature(FileSystem& files) noexcept : files_(files) {}

  void* ReadFromFolder(const wchar_t* folder, int32_t number,
                       uint32_t* size_bytes) noexcept override;
  void* ReadFromArchive(const wchar_t* archive, int32_t number,
                        uint32_t* size_bytes) noexcept override;
  void Destroy(uint32_t flags) noexcept override;

 private:
  FileSystem& files_;
};

}  // namespace kelvo
