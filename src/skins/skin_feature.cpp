#include "skins/skin_feature.h"

#include <string.h>

#include "base/memory/heap.h"
#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {
namespace {

SkinBlock ReadWhole(FileReader& file) noexcept {
  const uint64_t size = file.SizeBytes();
  SkinBlock block;
  if (size > UINT32_MAX || !block.Allocate(static_cast<uint32_t>(size))) return {};
  if (file.ReadAt(0, block.data(), block.size()) != ReadResult::kOk) return {};
  return block;
}

}  // namespace

void* SkinReaderFeature::ReadFromFolder(const wchar_t* folder, int32_t number,
                                        uint32_t* size_bytes) noexcept {
  *size_bytes = 0;
  const char* name = SkinFileName(number);
  if (!folder || !name) return nullptr;
  wchar_t wide_name[kTextCapacity];
  AnsiToWide(name, strlen(name), wide_name, kTextCapacity);
  wchar_t path[kTextCapacity];
  CopyWide(path, kTextCapacity, folder);  // one that is cut has no room for the name
  if (!AppendWide(path, kTextCapacity, L"\\") || !AppendWide(path, kTextCapacity, wide_name)) {
    return nullptr;
  }
  OpenFile<FileReader> file = files_.OpenRead(path, Share::kRead);
  return file ? ReadWhole(*file).Release(size_bytes) : nullptr;
}

void* SkinReaderFeature::ReadFromArchive(const wchar_t* archive, int32_t number,
                                         uint32_t* size_bytes) noexcept {
  *size_bytes = 0;
  const char* name = SkinFileName(number);
  if (!archive || !name) return nullptr;
  OpenFile<FileReader> file = files_.OpenRead(archive, Share::kRead);
  return file ? ReadFromSkinArchive(*file, name).Release(size_bytes) : nullptr;
}

void SkinReaderFeature::Destroy(uint32_t flags) noexcept {
  if (flags & 1) HeapDelete(this);
}

}  // namespace kelvo
