// Feature 3: the input plug-in for Ogg Vorbis files.
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
                              wchar_t* artist, wchar_t* title) noexcept = 0;

  // Slot 17. The window that receives kMessageEndOfPlayback (messages.h); null for none.
  virtual void SetNotifyWindow(WindowHandle window) noexcept = 0;

 protected:
  ~OggVorbisInput() = default;
};

}  // namespace kelvo
