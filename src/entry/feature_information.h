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
    return QueryPlugin(ogg_, path, texts);
  }
  bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept override {
    return QueryPlugin(wma_, path, texts);
  }
  bool WmaAvailable() noexcept override { return wma_.available(); }

 private:
  OggVorbisInput& ogg_;
  WmaInputPlugin& wma_;
};

}  // namespace kelvo
