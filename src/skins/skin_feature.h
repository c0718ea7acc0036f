// Skins: their bytes on the way to the host, the archive's reader, and the feature.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <utility>

#include "base/bytes/byte_source.h"
#include "base/files/file_system.h"
#include "base/memory/heap.h"
#include "base/text/wide.h"
#include "kelvo/skin_reader.h"

namespace kelvo {

// A skin file's bytes on their way to the host, which frees the block itself.
class SkinBlock {
 public:
  SkinBlock() noexcept = default;
  SkinBlock(SkinBlock&& other) noexcept
      : bytes_(std::exchange(other.bytes_, nullptr)), size_(std::exchange(other.size_, 0)) {}
  SkinBlock& operator=(SkinBlock&&) = delete;
  ~SkinBlock() { HeapFree(bytes_); }

  // A block of zeros; false when memory is out. For an empty block.
  [[nodiscard]] bool Allocate(uint32_t size) noexcept {
    bytes_ = HeapAllocateZeroed(size, 1);
    size_ = bytes_ ? size : 0;
    return bytes_ != nullptr;
  }

  void* data() const noexcept { return bytes_; }
  uint32_t size() const noexcept { return size_; }

  // Hands the block over; null when there is none. *size gets its size either way.
  [[nodiscard]] void* Release(uint32_t* size) noexcept {
    *size = std::exchange(size_, 0);
    return std::exchange(bytes_, nullptr);
  }

 private:
  void* bytes_ = nullptr;
  uint32_t size_ = 0;
};

// More is no skin file but an attempt to fill the device's memory.
constexpr uint32_t kMostSkinBytes = 16u << 20;

// Why there are no bytes.
enum class SkinFault : uint8_t {
  kNone,
  kNotAnArchive,
  kNoMember,
  kEncrypted,
  kMethodUnknown,
  kTooLarge,
  kDamaged,
  kNoMemory,
};

// For those who report it: which member of an archive was taken, and what became of it.
struct SkinMember {
  char name[kTextCapacity];  // as the archive has it; empty when there is none
  SkinFault fault;
};

// Reads the member of a zip archive that is called `name`; no block when there is none or when it
// cannot be read and verified: damaged, encrypted, of an unknown method, over kMostSkinBytes, or
// holding more or fewer bytes than it claims.
//
// Skins are packed in many ways, so the best match counts: the exact name at the top level, then
// the name in other letters' case there, then that behind one folder ("/" or "\" between). Of equal
// matches the archive's first one. `member` may be null.
SkinBlock ReadFromSkinArchive(ByteSource& archive, const char* name,
                              SkinMember* member = nullptr) noexcept;

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
