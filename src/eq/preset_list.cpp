#include "eq/preset_list.h"

#include "base/text/wide.h"
#include "eq/preset_path.h"

namespace kelvo {

class PresetList::Collector final : public FolderVisitor {
 public:
  explicit Collector(PresetList* list) noexcept : list_(list) {}

  bool Visit(const FolderEntry& entry) noexcept override {
    // Desktop file systems also match the short forms of longer extensions.
    const size_t length = WideLength(entry.name);
    if (entry.is_folder() || length < kPresetExtensionLength ||
        !EqualAsciiNoCase(entry.name + length - kPresetExtensionLength, kPresetExtension)) {
      return true;
    }
    if (list_->count_ == kPresetCapacity) return false;
    if (!list_->names_[list_->count_].Assign(entry.name)) return false;
    ++list_->count_;
    return true;
  }

 private:
  PresetList* list_;
};

int32_t PresetList::Find(const wchar_t* name) const noexcept {
  const size_t length = WideLength(name);
  for (int32_t i = 0; i < count_; ++i) {
    const wchar_t* file = names_[i].get();
    if (EqualNoCase(file, name, length) && EqualAsciiNoCase(file + length, kPresetExtension)) {
      return i;
    }
  }
  return -1;
}

void PresetList::Append(FileSystem& files, const wchar_t* base_folder) noexcept {
  Collector collector(this);
  const PresetPath pattern(base_folder, L"*", kPresetExtension);
  // A folder that cannot be listed holds no presets.
  static_cast<void>(files.List(pattern.c_str(), collector));
}

void PresetList::Clear() noexcept {
  for (HeapText& name : names_) name.Clear();
  count_ = 0;
}

}  // namespace kelvo
