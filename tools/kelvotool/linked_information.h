#pragma once

#include "base/files/file_system.h"
#include "catalog/media/add_entry.h"
#include "input/vorbis/ogg_vorbis_plugin.h"

namespace kelvo::tool {

// The readers of the input plug-ins, linked in. Windows Media needs no player to be described.
class LinkedInformation final : public MediaInformation {
 public:
  explicit LinkedInformation(FileSystem& files) noexcept : files_(files) {}

  bool OggInformation(const wchar_t* path, MediaTexts* texts) noexcept override;
  bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept override;
  bool WmaAvailable() noexcept override { return true; }

 private:
  FileSystem& files_;
  OggVorbisPlugin vorbis_{files_};
};

}  // namespace kelvo::tool
