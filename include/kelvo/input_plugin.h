// The contract between the host and an input plug-in, which turns one media file into PCM.
//
// Order of calls: SetReader, Open; SetOutput, Play; then TogglePause, SeekMs, the getters in any
// order; Stop; Close (or a new Open after Close). The object is built once and reused for file
// after file. Stop comes before Close. Every operation is harmless without a file: it returns 0 or
// does nothing. Failure is a zero result, unless an operation says otherwise; no text crosses this
// interface.
//
// Thread: the host calls all operations from one thread, its own. A plug-in may have a decoding
// thread; that one calls AudioOutput, MediaReader, SetState and GetState.
//
// The plug-in calls its own SetState, GetState and TogglePause through the object's table: a host
// that puts a table of its own there sees every change of the state.
//
// Generated from tools/contract/input_plugin.txt.
#pragma once

#include <atomic>

#include "kelvo/audio_output.h"
#include "kelvo/media_info.h"
#include "kelvo/media_reader.h"
#include "kelvo/types.h"

namespace kelvo {

enum PlaybackState : uint32_t {
  kStopped = 1,  // also: opened but not playing
  kPlaying = 2,
  kPaused = 3,
};

class InputPlugin {
 public:
  // The library never reads the context. Output and reader are borrowed: they must stay alive until
  // the file that uses them has been stopped and closed.
  void SetHostContext(HostWord context) noexcept { host_context_ = context; }
  void SetOutput(AudioOutput* output) noexcept { output_ = output; }  // before Play
  void SetReader(MediaReader* reader) noexcept { reader_ = reader; }  // before Open
  // Slot 0.
  virtual void Reserved0() noexcept {}

  // Slot 1. Writes the open file's display title ("artist - title", or the file's name) into a
  // buffer of kMaxText characters. Non-zero when a title was written.
  virtual int32_t GetDisplayTitle(wchar_t* title) noexcept {
    static_cast<void>(title);
    return 0;
  }

  // Slot 2. Fills the record from the open file.
  virtual void GetMediaInfo(MediaInfo* info) noexcept { static_cast<void>(info); }

  // Slot 3. Length of the open file in milliseconds.
  virtual int32_t GetLengthMs() noexcept { return 0; }

  // Slot 4. Position in milliseconds; the words are passed on to AudioOutput::PlayedSamples.
  virtual int32_t GetPositionMs(HostWord a, HostWord b) noexcept {
    static_cast<void>(a), static_cast<void>(b);
    return 0;
  }

  // Slot 5. Stores a PlaybackState. The plug-in makes every change of its own through this slot, on
  // its decoding thread too, and with a lock of its own held: no operation but GetState may be
  // awaited from within.
  virtual void SetState(uint32_t state) noexcept { StoreState(state); }

  // Slot 6. The PlaybackState.
  virtual uint32_t GetState() noexcept { return LoadState(); }

  // Slot 7.
  virtual uint32_t Reserved7() noexcept { return 0; }

  // Slot 8.
  virtual uint32_t Reserved8() noexcept { return 0; }

  // Slot 9. Goes to a position in milliseconds. Non-zero on success; a position at or behind the
  // end is refused, a negative one is the start. (Ogg Vorbis: a seek while the last buffers drain
  // ends the thread with its message; the state stays as it was, playing or paused, and the output
  // open: after Stop and SetState(kStopped) the next Play opens it anew.)
  virtual int32_t SeekMs(int32_t milliseconds) noexcept {
    static_cast<void>(milliseconds);
    return 0;
  }

  // Slot 10. Ends playback. A plain Play afterwards goes on where the file was (Ogg Vorbis:
  // counting the position from 0) or starts at the beginning (Windows Media); a new Open always
  // starts there.
  virtual int32_t Stop() noexcept { return 0; }

  // Slot 11. Pauses when playing, resumes when paused. (Result: some plug-ins only.)
  virtual int32_t TogglePause() noexcept { return 0; }

  // Slot 12. Starts playback, or resumes it when paused (feature 6: see wma_input.h). Non-zero when
  // the attempt was made; the state tells whether it plays.
  virtual int32_t Play() noexcept { return 0; }

  // Slot 13. Closes the file; the words are passed on to MediaReader::Release.
  virtual int32_t Close(HostWord a, HostWord b) noexcept {
    static_cast<void>(a), static_cast<void>(b);
    return 0;
  }

  // Slot 14. Opens a file through the reader, which receives path and mode. Non-zero on success. A
  // path of kMaxText or more characters is refused.
  virtual int32_t Open(const wchar_t* path, uint32_t mode) noexcept {
    static_cast<void>(path), static_cast<void>(mode);
    return 0;
  }

  // Slot 15. Ends playback, releases the file and the reader, and gives the object's memory back
  // when bit 0 of `flags` is set. Otherwise the object stays with the table of the base class, in
  // which every slot does what is written here, and with the host's context, output and reader. For
  // a host that wants a feature's object gone before the library is unloaded; bit 0 is never for
  // the objects of GetFeature.
  virtual void Destroy(uint32_t flags) noexcept { static_cast<void>(flags); }

 protected:
  InputPlugin() noexcept = default;
  InputPlugin(const InputPlugin& other) noexcept
      : host_context_(other.host_context_),
        output_(other.output_),
        reader_(other.reader_),
        state_(other.LoadState()) {}
  InputPlugin& operator=(const InputPlugin&) = delete;
  ~InputPlugin() = default;

  // Two threads read and write the state.
  uint32_t LoadState() const noexcept { return state_.load(std::memory_order_relaxed); }
  void StoreState(uint32_t state) noexcept { state_.store(state, std::memory_order_relaxed); }

  HostWord host_context_ = 0;
  AudioOutput* output_ = nullptr;
  MediaReader* reader_ = nullptr;
  std::atomic<uint32_t> state_{kStopped};  // a plain word of 32 bits
};

static_assert(sizeof(std::atomic<uint32_t>) == 4);
static_assert(sizeof(void*) != 4 || sizeof(InputPlugin) == 20);

}  // namespace kelvo
