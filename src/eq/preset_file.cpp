#include "eq/preset_file.h"

#include <string.h>

#include "base/files/file_replacement.h"
#include "base/text/ansi.h"
#include "kelvo/equalizer_presets.h"

namespace kelvo {
namespace {

constexpr size_t kNameBytes = 20;

}  // namespace

PresetPath::PresetPath(const wchar_t* base_folder, const wchar_t* name,
                       const wchar_t* extension) noexcept {
  constexpr size_t kCapacity = sizeof(path_) / sizeof(wchar_t);
  path_[0] = 0;
  const wchar_t* const parts[] = {base_folder ? base_folder : L"", L"\\presets\\", name, extension};
  for (const wchar_t* part : parts) {
    if (!AppendWide(path_, kCapacity, part)) return;
  }
}

bool CanNamePreset(const wchar_t* name) noexcept {
  for (; *name != 0; ++name) {
    if (*name < L' ' || FindWide(L"\\/:*?\"<>|", *name)) return false;
  }
  return true;
}

bool WritePresetFile(FileSystem& files, const wchar_t* path, const wchar_t* name,
                     const uint8_t* setting) noexcept {
  uint8_t bytes[kNameBytes + kEqualizerSettingBytes] = {};
  WideToAnsi(name, WideLength(name), reinterpret_cast<char*>(bytes), kNameBytes - 1, nullptr);
  memcpy(bytes + kNameBytes, setting, kEqualizerSettingBytes);
  FileReplacement replacement(files, path);
  return replacement && replacement.file().Write(bytes, sizeof(bytes)) && replacement.Commit();
}

bool ReadPresetFile(FileSystem& files, const wchar_t* path, uint8_t* setting) noexcept {
  OpenFile<FileReader> file = files.OpenRead(path, Share::kRead);
  uint8_t read[kEqualizerSettingBytes];
  if (!file || file->ReadAt(kNameBytes, read, sizeof(read)) != ReadResult::kOk) return false;
  memcpy(setting, read, sizeof(read));
  return true;
}

}  // namespace kelvo
