#pragma once

#include "base/text/wide.h"

namespace kelvo {

constexpr wchar_t kPresetExtension[] = L".eqf";
constexpr size_t kPresetExtensionLength = sizeof(kPresetExtension) / sizeof(wchar_t) - 1;

// A path in the presets folder below a base folder. One that is too long is cut to 260 characters,
// which the file system refuses.
class PresetPath {
 public:
  PresetPath(const wchar_t* base_folder, const wchar_t* name, const wchar_t* extension) noexcept {
    path_[0] = 0;
    const wchar_t* const parts[] = {base_folder ? base_folder : L"", L"\\presets\\", name,
                                    extension};
    for (const wchar_t* part : parts) {
      if (!AppendWide(path_, kCapacity, part)) return;
    }
  }
  const wchar_t* c_str() const noexcept { return path_; }

 private:
  static constexpr size_t kCapacity = kTextCapacity + 1;
  wchar_t path_[kCapacity];
};

}  // namespace kelvo
