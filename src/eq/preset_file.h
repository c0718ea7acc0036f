// One preset file (docs/formats/eqf.md): a name of 20 bytes, then the setting.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/byte_source.h"

namespace kelvo {

constexpr size_t kPresetNameBytes = 20;
constexpr size_t kPresetSettingBytes = 11;
constexpr size_t kPresetFileBytes = kPresetNameBytes + kPresetSettingBytes;

// The name becomes ANSI text, cut so that its terminator fits. `setting` has kPresetSettingBytes.
void EncodePreset(const wchar_t* name, const uint8_t* setting,
                  uint8_t (&file)[kPresetFileBytes]) noexcept;

// False, with `setting` untouched, when the file is too short or cannot be read. What stands in the
// name field does not matter.
[[nodiscard]] bool ReadPresetSetting(ByteSource& file, uint8_t* setting) noexcept;

}  // namespace kelvo
