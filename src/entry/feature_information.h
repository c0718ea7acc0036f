#pragma once

#include "catalog/media/media_information.h"
#include "input/wma/wma_input_plugin.h"
#include "kelvo/ogg_vorbis_input.h"

namespace kelvo {

// The library's own input plug-ins as the catalog asks them.
class FeatureInformation final : public MediaInformation {
 public:
  // Borrowed.
  FeatureInformation(OggVorbisInput& ogg, WmaInputPlugin& wma) noexcept : ogg_(ogg), wma_(wma) {}

  bool OggInformation(const wchar_t* path, MediaTexts* texts) noexcept override {
    return Ask(ogg_, path, texts);
  }
  bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept override {
    return Ask(wma_, path, texts);
  }
  bool WmaAvailable() noexcept override { return wma_.available(); }

 private:
  template <class Plugin>
  static bool Ask(Plugin& plugin, const wchar_t* path, MediaTexts* texts) noexcept {
    uint32_t ignored = 0;
    return plugin.GetFileInfo(path, nullptr, texts->album, &texts->format, nullptr, &ignored,
                              texts->artist, texts->title) != 0;
  }

  OggVorbisInput& ogg_;
  WmaInputPlugin& wma_;
};

}  // namespace kelvo
