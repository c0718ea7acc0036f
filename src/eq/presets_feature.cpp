#include "eq/presets_feature.h"

#include <stddef.h>

#include "base/memory/heap.h"
#include "eq/preset_file.h"

namespace kelvo {

static_assert(offsetof(PresetNames, count) == kMaxPresets * sizeof(void*));
static_assert(sizeof(EqualizerPresets) == sizeof(void*), "the names follow the operations");

namespace {

// Appends what it visits to the names, until the table is full or memory is out.
class Collector final : public FolderVisitor {
 public:
  explicit Collector(PresetNames* names) noexcept : names_(*names) {}

  bool Visit(const FolderEntry& entry) noexcept override {
    // Desktop file systems also match the short forms of longer extensions.
    constexpr size_t kExtension = sizeof(kPresetExtension) / sizeof(wchar_t) - 1;
    const size_t length = WideLength(entry.name);
    if (entry.is_folder() || length < kExtension ||
        !EqualAsciiNoCase(entry.name + length - kExtension, kPresetExtension)) {
      return true;
    }
    if (names_.count == kMaxPresets || !names_.files[names_.count].Assign(entry.name)) return false;
    ++names_.count;
    return true;
  }

 private:
  PresetNames& names_;
};

}  // namespace

const wchar_t* PresetsFeature::FileAt(int32_t index) const noexcept {
  return index >= 0 && index < names_.count ? names_.files[index].get() : nullptr;
}

int32_t PresetsFeature::FindPreset(const wchar_t* name) noexcept {
  if (!name) return -1;
  const size_t length = WideLength(name);
  for (int32_t i = 0; i < names_.count; ++i) {
    const wchar_t* file = names_.files[i].get();
    if (EqualNoCase(file, name, length) && EqualAsciiNoCase(file + length, kPresetExtension)) {
      return i;
    }
  }
  return -1;
}

int32_t PresetsFeature::SavePreset(const uint8_t* setting, const wchar_t* base_folder,
                                   WindowHandle parent) noexcept {
  wchar_t name[kTextCapacity] = {};
  if (!setting || !prompts_.AskName(parent, name) || !CanNamePreset(name)) return 0;
  const PresetPath path(base_folder, name, kPresetExtension);
  if (files_.Exists(path.c_str()) && !prompts_.ConfirmOverwrite(parent)) return 0;
  return WritePresetFile(files_, path.c_str(), name, setting);
}

int32_t PresetsFeature::ReadPreset(int32_t index, uint8_t* setting,
                                   const wchar_t* base_folder) noexcept {
  const wchar_t* file = FileAt(index);
  return file && setting &&
         ReadPresetFile(files_, PresetPath(base_folder, file, L"").c_str(), setting);
}

void PresetsFeature::GetPresetName(int32_t index, wchar_t* name) noexcept {
  const wchar_t* file = FileAt(index);
  const wchar_t* point = file ? FindWide(file, L'.') : nullptr;
  const size_t length = point ? static_cast<size_t>(point - file) : 0;
  CopyWide(name, kMaxText, file ? file : L"", length);
}

void PresetsFeature::ClearPresets() noexcept {
  for (HeapText& file : names_.files) file.Clear();
  names_.count = 0;
}

int32_t PresetsFeature::ListPresets(const wchar_t* base_folder) noexcept {
  Collector collector(&names_);
  // A folder that cannot be listed holds no presets.
  static_cast<void>(
      files_.List(PresetPath(base_folder, L"*", kPresetExtension).c_str(), collector));
  return names_.count;
}

void PresetsFeature::Destroy(uint32_t flags) noexcept {
  ClearPresets();
  if (flags & 1) HeapDelete(this);
}

}  // namespace kelvo
