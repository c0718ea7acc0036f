// Feature 6: the input plug-in for Windows Media Audio files. It has no decoder: the platform's
// player control opens and plays the file, on threads and through an output of its own, so the
// host's AudioOutput and MediaReader are not used. What the control writes to the sound device runs
// through feature 9 first. GetFeature gives the object only where the control could be made.
//
// What differs from input_plugin.h:
//   GetDisplayTitle, GetMediaInfo   read the file anew at each call
//   GetPositionMs                   ignores its words
//   SetState                        is stored but does not show in GetState
//   Stop, Close                     both only stop; the control's own result (0 is success)
//   SeekMs                          the control decides what it accepts; the position is also
//                                   where a paused file will resume
//   Play                            when paused it starts without a seek: only TogglePause resumes
//                                   at the place
//   TogglePause                     pausing stops the control and remembers the position; the
//                                   control's own result (0 is success) when it paused, Play's when
//                                   it resumed, the state when there was nothing to pause
//   Open                            ignores the mode; a name that the system's 8-bit code page
//                                   lacks is refused, with a message box when there is an owner
//                                   window
// The state stays kPlaying when the file ends: the host calls Stop when it gets the message.
//
// Thread: all operations on the thread that loaded the library. Unloading while a file plays, or on
// another thread, is safe, but may take some seconds; on another thread a bare window is left to
// the loading one until that looks at its messages, and its apartment stays.
//
// Generated from tools/contract/wma_input.txt.
#pragma once

#include "kelvo/input_plugin.h"

namespace kelvo {

constexpr size_t kVisualisationSamples = 512;

class WmaInput : public InputPlugin {
 public:
  // Slot 16. The next kVisualisationSamples samples (16 bits, first channel, after the effects) of
  // the block that was handed to the sound device last, padded with zeros. 1 when they were
  // written; 0, and nothing is written, when a read before went beyond the block's end or `samples`
  // is null. A read that begins exactly at the end, as the first one ever, gives silence.
  virtual int32_t GetVisualisation(int16_t* samples) noexcept {
    static_cast<void>(samples);
    return 0;
  }

  // Slot 17. Asks about any file by its path, independent of the open one; the library opens and
  // closes the file itself. 1 when it is a Windows Media file, else 0. Every output may be null,
  // and is cleared first in any case; the texts are buffers of kMaxText characters. `info` has the
  // sample rate in kHz. `sdk_version`: of the software that wrote the file.
  virtual int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                              MediaInfo* info, uint32_t* length_ms, uint32_t* sdk_version,
                              wchar_t* artist, wchar_t* title) noexcept {
    static_cast<void>(path), static_cast<void>(display_title), static_cast<void>(album),
        static_cast<void>(info), static_cast<void>(length_ms), static_cast<void>(sdk_version),
        static_cast<void>(artist), static_cast<void>(title);
    return 0;
  }

  // Slot 18. The parent of the message box, and the window that receives kMessageEndOfPlayback
  // (messages.h); null for none.
  virtual void SetOwnerWindow(WindowHandle window) noexcept { static_cast<void>(window); }

 protected:
  WmaInput() noexcept = default;
  WmaInput(const WmaInput&) noexcept = default;
  ~WmaInput() = default;
};

}  // namespace kelvo
