#include "skins/folder_skin.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {

SkinBlock ReadFromSkinFolder(FileSystem& files, const wchar_t* folder, const char* name) noexcept {
  wchar_t wide_name[kTextCapacity];
  AnsiToWide(name, strlen(name), wide_name, kTextCapacity);
  wchar_t path[kTextCapacity];
  CopyWide(path, kTextCapacity, folder);
  if (WideLength(folder) >= kTextCapacity || !AppendWide(path, kTextCapacity, L"\\") ||
      !AppendWide(path, kTextCapacity, wide_name)) {
    return {};
  }

  OpenFile<FileReader> file = files.OpenRead(path, Share::kRead);
  if (!file) return {};
  const uint64_t size = file->SizeBytes();
  SkinBlock block;
  if (size > UINT32_MAX || !block.Take(static_cast<uint32_t>(size))) return {};
  if (file->ReadAt(0, block.data(), block.size()) != ReadResult::kOk) return {};
  return block;
}

}  // namespace kelvo
