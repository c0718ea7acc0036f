#include "eq/presets_feature.h"

#include "base/memory/heap.h"
#include "eq/preset_file.h"
#include "eq/preset_path.h"

namespace kelvo {
namespace {

static_assert(kMaxPresets == kPresetCapacity);
static_assert(kEqualizerSettingBytes == kPresetSettingBytes);

// A name typed with "..\" would leave the presets folder, and file systems disagree about the other
// characters.
bool CanNameFile(const wchar_t* name) noexcept {
  for (; *name != 0; ++name) {
    if (*name < L' ' || FindWide(L"\\/:*?\"<>|", *name)) return false;
  }
  return true;
}

}  // namespace

int32_t PresetsFeature::FindPreset(const wchar_t* name) noexcept {
  return name ? list_.Find(name) : -1;
}

int32_t PresetsFeature::SavePreset(const uint8_t* setting, const wchar_t* base_folder,
                                   WindowHandle parent) noexcept {
  wchar_t name[kTextCapacity] = {};
  if (!setting || !prompts_ || !prompts_->AskName(parent, name) || !CanNameFile(name)) return 0;
  const PresetPath path(base_folder, name, kPresetExtension);
  if (files_.Exists(path.c_str()) && !prompts_->ConfirmOverwrite(parent)) return 0;
  OpenFile<FileWriter> file = files_.Create(path.c_str(), Share::kNone);
  if (!file) return 0;
  uint8_t bytes[kPresetFileBytes];
  EncodePreset(name, setting, bytes);
  return file->Write(bytes, sizeof(bytes));
}

int32_t PresetsFeature::ReadPreset(int32_t index, uint8_t* setting,
                                   const wchar_t* base_folder) noexcept {
  const wchar_t* name = list_.At(index);
  if (!name || !setting) return 0;
  const PresetPath path(base_folder, name, L"");
  OpenFile<FileReader> file = files_.OpenRead(path.c_str(), Share::kRead);
  return file && ReadPresetSetting(*file, setting);
}

void PresetsFeature::GetPresetName(int32_t index, wchar_t* name) noexcept {
  const wchar_t* file = list_.At(index);
  const wchar_t* point = file ? FindWide(file, L'.') : nullptr;
  const size_t length = point ? static_cast<size_t>(point - file) : 0;
  CopyWide(name, kMaxText, file ? file : L"", length);
}

void PresetsFeature::ClearPresets() noexcept {
  list_.Clear();
}

int32_t PresetsFeature::ListPresets(const wchar_t* base_folder) noexcept {
  list_.Append(files_, base_folder);
  return list_.size();
}

void PresetsFeature::Destroy(uint32_t flags) noexcept {
  list_.Clear();
  if (flags & 1) HeapDelete(this);
}

}  // namespace kelvo
