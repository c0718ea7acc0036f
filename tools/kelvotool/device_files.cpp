#include "tools/kelvotool/device_files.h"

namespace kelvo::tool {
namespace {

// The name in a folder that equals another without regard to case.
class NameSearch final : public FolderVisitor {
 public:
  explicit NameSearch(const wchar_t* name) noexcept : name_(name) {}
  bool Visit(const FolderEntry& entry) noexcept override {
    if (!EqualNoCase(entry.name, name_)) return true;
    CopyWide(spelled, kTextCapacity, entry.name);
    return false;
  }
  wchar_t spelled[kTextCapacity] = {};

 private:
  const wchar_t* name_;
};

}  // namespace

const wchar_t* DeviceFiles::DevicePath(const wchar_t* path) const noexcept {
  const size_t length = WideLength(root_);
  if (WideLength(path) <= length || !EqualNoCase(path, root_, length)) return nullptr;
  if (path[length] == L'\\') return path + length;
  return length > 0 && path[length - 1] == L'\\' ? path + length - 1 : nullptr;
}

bool DeviceFiles::Descend(const wchar_t* name, size_t length) noexcept {
  const size_t folder = WideLength(found_);
  if (folder + 1 + length >= kTextCapacity) return false;
  found_[folder] = L'\\';
  CopyWide(found_ + folder + 1, kTextCapacity - folder - 1, name, length);
  if (files_.Exists(found_)) return true;
  NameSearch search(found_ + folder + 1);
  wchar_t pattern[kTextCapacity];
  CopyWide(pattern, kTextCapacity, found_, folder + 1);
  if (!AppendWide(pattern, kTextCapacity, L"*")) return false;
  files_.List(pattern, search);
  CopyWide(found_ + folder + 1, kTextCapacity - folder - 1, search.spelled);
  return search.spelled[0] != 0;
}

bool DeviceFiles::Find(const wchar_t* path) noexcept {
  const size_t root = WideLength(root_);
  if (path[0] != L'\\' || root >= kTextCapacity) return false;
  CopyWide(found_, kTextCapacity, root_);
  if (root > 0 && found_[root - 1] == L'\\') found_[root - 1] = 0;
  for (const wchar_t* name = path; *name == L'\\';) {
    ++name;
    const wchar_t* const next = FindWide(name, L'\\');
    const size_t length = next ? static_cast<size_t>(next - name) : WideLength(name);
    if (!Descend(name, length)) return false;
    name += length;
  }
  return true;
}

OpenFile<FileReader> DeviceFiles::OpenRead(const wchar_t* path, Share share) noexcept {
  return Find(path) ? files_.OpenRead(found_, share) : OpenFile<FileReader>();
}

bool DeviceFiles::GetAttributes(const wchar_t* path, uint32_t* attributes) noexcept {
  return Find(path) && files_.GetAttributes(found_, attributes);
}

}  // namespace kelvo::tool
