#pragma once

#include "base/bytes/byte_source.h"
#include "base/memory/array.h"
#include "entry/language/templates.h"

namespace kelvo::tool {

// Kinds of resources, with the system's numbers.
enum class ResourceKind : uint16_t {
  kBitmap = 2,
  kMenu = 4,
  kDialog = 5,
  kStrings = 6,
  kData = 10
};

struct ResourceBytes {
  const uint8_t* bytes;
  size_t size;
};

// The numbered resources of a DLL or program for Windows, of any processor, read as a file. A
// resource that lies outside the file is none.
class PeResources {
 public:
  // False when it is no such file, cannot be read, or memory is out.
  [[nodiscard]] bool Load(ByteSource& file) noexcept;

  // In the order of the file, which is that of the numbers; false behind the last one.
  bool IdAt(ResourceKind kind, size_t index, uint16_t* id) const noexcept;
  // Of the first language that has it.
  bool Find(ResourceKind kind, uint16_t id, ResourceBytes* found) const noexcept;
  bool Has(ResourceKind kind, uint16_t id) const noexcept {
    ResourceBytes found;
    return Find(kind, id, &found);
  }
  // A string as it is stored, perhaps with its terminator; false when there is none.
  bool FindString(uint16_t id, StoredText* text) const noexcept;

 private:
  struct Section {
    uint32_t address, size, offset;
  };
  // A table of numbers and what they lead to.
  struct Directory {
    size_t first;  // entry; where it lies in the file
    size_t count;
  };

  bool Has(size_t offset, size_t size) const noexcept {
    return offset <= bytes_.size() && size <= bytes_.size() - offset;
  }
  uint16_t Word(size_t offset) const noexcept {
    return Has(offset, 2) ? LoadU16(bytes_.data() + offset) : uint16_t{0};
  }
  uint32_t Long(size_t offset) const noexcept {
    return Has(offset, 4) ? LoadU32(bytes_.data() + offset) : 0;
  }
  bool OffsetOf(uint32_t address, size_t size, size_t* offset) const noexcept;
  bool DirectoryAt(uint32_t offset, Directory* directory) const noexcept;
  // What the number leads to; the high bit says that it is another directory.
  bool Entry(const Directory& directory, uint16_t id, uint32_t* leads_to) const noexcept;
  bool KindsDirectory(ResourceKind kind, Directory* directory) const noexcept;

  Array<uint8_t> bytes_;
  Array<Section> sections_;
  size_t root_ = 0;  // where the resources begin in the file; 0 when there are none
};

}  // namespace kelvo::tool
