// One preset file (docs/formats/eqf.md): a name of 20 bytes, then the host's setting.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/files/file_system.h"
#include "base/text/wide.h"

namespace kelvo {

constexpr wchar_t kPresetExtension[] = L".eqf";

// A path in the presets folder below a base folder. One that is too long is cut to 260 characters,
// which the file system refuses.
class PresetPath {
 public:
  PresetPath(const wchar_t* base_folder, const wchar_t* name, const wchar_t* extension) noexcept;
  const wchar_t* c_str() const noexcept { return path_; }

 private:
  wchar_t path_[kTextCapacity + 1];
};

// A name typed with "..\" would leave the presets folder, and file systems disagree about the other
// characters.
bool CanNamePreset(const wchar_t* name) noexcept;

// `setting` has kEqualizerSettingBytes. The name becomes ANSI text, cut so that its terminator
// fits. False when the file could not be written; one that was there is then unchanged.
[[nodiscard]] bool WritePresetFile(FileSystem& files, const wchar_t* path, const wchar_t* name,
                                   const uint8_t* setting) noexcept;

// False, with `setting` untouched, when the file is too short or cannot be read. What stands in the
// name field does not matter.
[[nodiscard]] bool ReadPresetFile(FileSystem& files, const wchar_t* path,
                                  uint8_t* setting) noexcept;

}  // namespace kelvo
