#include "skins/skin_feature.h"

#include "base/memory/heap.h"
#include "skins/archive_skin.h"
#include "skins/folder_skin.h"
#include "skins/skin_files.h"

namespace kelvo {

static_assert(kSkinVolume == kSkinFileCount);

void* SkinReaderFeature::ReadFromFolder(const wchar_t* folder, int32_t number,
                                        uint32_t* size_bytes) noexcept {
  *size_bytes = 0;
  const char* name = SkinFileName(number);
  if (!folder || !name) return nullptr;
  return ReadFromSkinFolder(files_, folder, name).Release(size_bytes);
}

void* SkinReaderFeature::ReadFromArchive(const wchar_t* archive, int32_t number,
                                         uint32_t* size_bytes) noexcept {
  *size_bytes = 0;
  const char* name = SkinFileName(number);
  if (!archive || !name) return nullptr;
  OpenFile<FileReader> file = files_.OpenRead(archive, Share::kRead);
  if (!file) return nullptr;
  return ReadFromSkinArchive(*file, name).Release(size_bytes);
}

void SkinReaderFeature::Destroy(uint32_t flags) noexcept {
  if (flags & 1) HeapDelete(this);
}

}  // namespace kelvo
