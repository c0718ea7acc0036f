// Feature 3. The host's thread calls every operation; while a file plays, a decoding thread fills
// the output's buffers.
#pragma once

#include "base/files/file_system.h"
#include "base/sync/lock.h"
#include "base/sync/shared_word.h"
#include "base/sync/thread.h"
#include "base/text/wide.h"
#include "input/vorbis/vorbis_stream.h"
#include "kelvo/ogg_vorbis_input.h"

namespace kelvo {

// Not final: changes of the state go through the object's table, which may be a host's.
class OggVorbisPlugin : public OggVorbisInput {
 public:
  // The files that GetFileInfo opens; must outlive this.
  explicit OggVorbisPlugin(FileSystem& files) noexcept;
  // Playback has been stopped before: a thread's end cannot be awaited while a library unloads.
  ~OggVorbisPlugin();

  // Lets go of an open file without a call into the host's reader.
  void ForgetFile() noexcept { stream_.Forget(); }

  // The file: ogg_vorbis_plugin.cpp.
  int32_t GetDisplayTitle(wchar_t* title) noexcept override;
  void GetMediaInfo(MediaInfo* info) noexcept override;
  int32_t GetLengthMs() noexcept override;
  int32_t Close(HostWord a, HostWord b) noexcept override;
  int32_t Open(const wchar_t* path, uint32_t mode) noexcept override;
  void Destroy(uint32_t flags) noexcept override;
  int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album, MediaInfo* info,
                      uint32_t* length_ms, uint32_t* ignored, wchar_t* artist,
                      wchar_t* title) noexcept override;
  void SetNotifyWindow(WindowHandle window) noexcept override { notify_window_ = window; }

  // Playback: playback.cpp.
  int32_t GetPositionMs(HostWord a, HostWord b) noexcept override;
  int32_t SeekMs(int32_t milliseconds) noexcept override;
  int32_t Stop() noexcept override;
  int32_t TogglePause() noexcept override;
  int32_t Play() noexcept override;

 private:
  enum class Step { kGoOn, kEnd, kError };

  void TearDown() noexcept;
  bool StartThread() noexcept;
  void StopThread() noexcept;

  // The decoding thread.
  static void ThreadBody(void* plugin) noexcept;
  void RunDecoding() noexcept;
  bool StartOutput() noexcept;
  Step DecodeStep() noexcept;
  void HandOverBuffer() noexcept;
  void RestartAfterSeek() noexcept;  // holds the lock
  bool DrainOutput() noexcept;
  void Finish(bool drain) noexcept;

  // Up to seek_base_ the fields and their places are part of the contract, as a host reads them.
  SharedPointer<WindowHandle> notify_window_;  // the host sets it while a file may be ending
  OpenVorbis stream_;
  uint32_t total_frames_ = 0;
  uint32_t reserved_[2] = {};
  uint32_t channels_ = 0;
  uint32_t sample_rate_ = 0;  // Hz
  uint32_t bit_rate_ = 0;     // kbit/s
  uint32_t more_reserved_[2] = {};
  Thread thread_;  // a word: all bits set at first, null after a stop
  int32_t thread_priority_ = kPriorityNormal;
  Event ready_;  // the decoding thread has started the output, or has ended

  // Guards the stream (while a thread runs) and the changes of the state and the flags below that
  // must happen together. The decoding thread never holds it while it waits for a buffer or sleeps.
  Lock lock_;
  wchar_t path_[kTextCapacity] = {};

  // The decoding thread's own, while one runs.
  OutputBuffer* current_ = nullptr;
  uint32_t buffer_bytes_ = 0;
  uint32_t free_bytes_ = 0;  // room left in the current buffer

  SharedWord seek_pending_;
  SharedWord run_output_;  // the output is meant to run: the user has not paused it
  SharedWord stop_request_;
  SharedWord seek_base_;  // frame reached by the last seek

  FileSystem& files_;
  SharedWord thread_done_;  // the decoding thread has come to its end by itself
  bool torn_down_ = false;
};

// frames / rate * 1000; 0 for a rate of 0.
double FramesToMs(double frames, uint32_t rate) noexcept;
// Truncates.
int32_t SaturatedMs(double milliseconds) noexcept;

}  // namespace kelvo
