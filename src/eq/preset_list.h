#pragma once

#include <stdint.h>

#include "base/files/file_system.h"
#include "base/memory/heap_text.h"

namespace kelvo {

constexpr int32_t kPresetCapacity = 200;

// The file names ("Rock.eqf") of the presets of one folder or several, in a fixed table.
class PresetList {
 public:
  int32_t size() const noexcept { return count_; }

  // The file's name, or null for an empty slot; every index is allowed.
  const wchar_t* At(int32_t index) const noexcept {
    return index >= 0 && index < count_ ? names_[index].get() : nullptr;
  }

  // The first preset whose file is `name` + ".eqf", letters compared without case; or -1.
  int32_t Find(const wchar_t* name) const noexcept;

  // Appends the presets below the base folder, until the table is full or memory is out.
  void Append(FileSystem& files, const wchar_t* base_folder) noexcept;

  void Clear() noexcept;

 private:
  class Collector;

  int32_t count_ = 0;
  HeapText names_[kPresetCapacity];
};

}  // namespace kelvo
