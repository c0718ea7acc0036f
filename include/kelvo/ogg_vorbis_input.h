// Feature 3: the input plug-in for Ogg Vorbis files.
//
// Generated from tools/contract/ogg_vorbis_input.txt.
#pragma once

#include "kelvo/input_plugin.h"

namespace kelvo {

// The desktop's CRITICAL_SECTION, which the library enters, and how often it is entered.
struct LockFields {
  void* debug;
  int32_t lock_count;
  int32_t recursions;
  void* owner;
  void* semaphore;
  uintptr_t spins;
  int32_t depth;
};
static_assert(sizeof(void*) != 4 || sizeof(LockFields) == 28);

// The object's words behind the table of operations, by their places on 32 bits. Behind the fields
// of InputPlugin. What follows is the library's own; so is changing any of this.
//    20  WindowHandle notify_window
//    24  void* stream: null without a file; its first word is the reader
//    28  uint32_t total_frames
//    32  uint32_t reserved[2]: cleared by Open
//    40  uint32_t channels
//    44  uint32_t sample_rate: Hz
//    48  uint32_t bit_rate: kbit/s
//    52  uint32_t more_reserved[2]: cleared by Open
//    60  void* thread: a handle: all bits set at first, null after Stop
//    64  int32_t thread_priority: of the next thread: 3 is normal, 0 the most urgent, 7 the least
//    68  void* ready_event: signalled when the thread has started the output, or has ended
//    72  LockFields lock: of what the two threads share
//   100  wchar_t path[260]: of the open file
//   620  OutputBuffer* current: the buffer being filled
//   624  uint32_t buffer_bytes
//   628  uint32_t free_bytes: in the current buffer
//   632  uint32_t seek_pending
//   636  uint32_t run_output: the user has not paused it
//   640  uint32_t stop_request
//   644  uint32_t seek_base: frame reached by the last seek
class OggVorbisInput : public InputPlugin {
 public:
  // Slot 16. Asks about any file by its path, independent of the open one; the library opens and
  // closes the file itself. Non-zero when the file could be opened. Every output may be null; the
  // texts are buffers of kMaxText characters. `info` is to be zero-filled; its stereo flag is set
  // for every file of more than one channel (GetMediaInfo: of exactly two).
  virtual int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                              MediaInfo* info, uint32_t* length_ms, uint32_t* ignored,
                              wchar_t* artist, wchar_t* title) noexcept {
    static_cast<void>(path), static_cast<void>(display_title), static_cast<void>(album),
        static_cast<void>(info), static_cast<void>(length_ms), static_cast<void>(ignored),
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
