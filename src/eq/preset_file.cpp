#include "eq/preset_file.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {

void EncodePreset(const wchar_t* name, const uint8_t* setting,
                  uint8_t (&file)[kPresetFileBytes]) noexcept {
  memset(file, 0, kPresetNameBytes);
  WideToAnsi(name, WideLength(name), reinterpret_cast<char*>(file), kPresetNameBytes - 1, nullptr);
  memcpy(file + kPresetNameBytes, setting, kPresetSettingBytes);
}

bool ReadPresetSetting(ByteSource& file, uint8_t* setting) noexcept {
  uint8_t read[kPresetSettingBytes];
  if (file.ReadAt(kPresetNameBytes, read, sizeof(read)) != ReadResult::kOk) return false;
  memcpy(setting, read, sizeof(read));
  return true;
}

}  // namespace kelvo
