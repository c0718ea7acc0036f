// Feature 3: the input plug-in for Ogg Vorbis files. The fields behind those of InputPlugin are in
// src/input/vorbis/ogg_vorbis_plugin.h; their places are part of the contract.
#pragma once

#include "kelvo/input_plugin.h"

namespace kelvo {

class OggVorbisInput : public InputPlugin {
 public:
  // Slot 16. Asks about any file by its path, independent of the open one; the library opens and
  // closes the file itself. Non-zero when the file could be opened. Every output may be null; the
  // texts are buffers of kMaxText characters. `info` is to be zero-filled; its stereo flag is set
  // for every file of more than one channel (GetMediaInfo: of exactly two).
  virtual int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                              MediaInfo* info, uint32_t* length_ms, uint32_t* ignored,
                              wchar_t* artist, wchar_t* title) noexcept {
    static_cast<void>(path), static_cast<void>(display_title), static_cast<void>(album);
    static_cast<void>(info), static_cast<void>(length_ms), static_cast<void>(ignored);
    static_cast<void>(artist), static_cast<void>(title);
    return 0;
  }

  // Slot 17. The window that receives kMessageEndOfPlayback (messages.h); null for none.
  virtual void SetNotifyWindow(WindowHandle window) noexcept { static_cast<void>(window); }

 protected:
  OggVorbisInput() noexcept = default;
  OggVorbisInput(const OggVorbisInput&) noexcept = default;
  ~OggVorbisInput() = default;
};

}  // namespace kelvo
