#include "tools/kelvotool/linked_information.h"

#include "input/wma/asf_header.h"

namespace kelvo::tool {

bool LinkedInformation::OggInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  return QueryPlugin(vorbis_, path, texts);
}

bool LinkedInformation::WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  OpenFile<FileReader> file = files_.OpenRead(path, Share::kRead);
  AsfInfo info;
  if (!file || !ReadAsfInfo(*file, path, &info)) return false;
  CopyWide(texts->title, kTextCapacity, info.title);
  CopyWide(texts->artist, kTextCapacity, info.author);
  CopyWide(texts->album, kTextCapacity, info.album);
  texts->format = info.format;
  return true;
}

}  // namespace kelvo::tool
