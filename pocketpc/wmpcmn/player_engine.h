#pragma once

#include <windows.h>

#include <stdint.h>

#include "base/memory/heap_text.h"
#include "base/sync/lock.h"
#include "base/windows/com_ptr.h"
#include "base/windows/unique_handle.h"
#include "pocketpc/wmpcmn/asf_decoder.h"
#include "pocketpc/wmpcmn/audio_queue.h"
#include "pocketpc/wmpcmn/event_source.h"

namespace kelvo {

// Opens and plays one file at a time on a thread of its own, which the first command starts; a
// player that is only made and given up needs no thread, so that works inside an attach handler.
// Any thread may call; events come on the player's thread, where they may call back into it.
class PlayerEngine {
 public:
  // Null when memory or system objects are out.
  static PlayerEngine* Create(EventSource* events) noexcept;
  // Ends playback without an event and gives the player up; nothing is played or fired afterwards.
  // Returns within seconds, also inside a detach handler; the file may be closed later then.
  void Quit() noexcept;

  // Replaces the file, also when it fails: then there is none. Opening does not start playing. The
  // file itself is held open only while it plays: others may then delete it, and a process may end
  // (the system's reader crashes one that ends while it is open).
  HRESULT Open(const wchar_t* path) noexcept;
  // E_UNEXPECTED without a file, the reader's error when it is gone. Playing already: nothing
  // happens.
  HRESULT Play() noexcept;
  // Goes back to the start. Stopped already: only that.
  HRESULT Stop() noexcept;
  // Silence at once, also inside a detach handler: the file is closed later. For a player that
  // nobody may have used yet.
  HRESULT Halt() noexcept;
  // At once while playing, else where Play will begin. Beyond the end means the end.
  HRESULT Seek(double seconds) noexcept;
  // E_UNEXPECTED without a file.
  HRESULT GetPosition(double* seconds) noexcept;
  HRESULT GetDuration(double* seconds) noexcept;

 private:
  enum class Verb { kOpen, kPlay, kStop, kSeek, kHalt, kQuit };
  struct Command {
    Verb verb;
    const wchar_t* path;
    uint64_t time;
  };
  template <class T>
  friend void HeapDelete(T* object) noexcept;
  template <class T, class... Args>
  friend T* HeapNew(Args&&... args) noexcept;

  explicit PlayerEngine(EventSource* events) noexcept
      : events_(ComPtr<EventSource>::Share(events)) {}
  ~PlayerEngine() = default;

  bool started() noexcept;
  HRESULT Run(const Command& command) noexcept;
  void Drop() noexcept;  // by an owner: whoever made the player, or its thread

  // The rest runs on the player's thread.
  void Loop() noexcept;
  HRESULT Execute(const Command& command) noexcept;
  HRESULT DoOpen(const wchar_t* path) noexcept;
  HRESULT Examine(const wchar_t* path) noexcept;
  HRESULT DoPlay() noexcept;
  void DoStop() noexcept;
  void Silence() noexcept;  // all of stopping but closing the file
  HRESULT DoSeek(uint64_t time) noexcept;
  // Takes back what has been played and decodes what fits; true when playback ended, with *event.
  bool Pump(DISPID* event) noexcept;
  HRESULT Refill() noexcept;
  void SetPosition(uint64_t time) noexcept;

  LONG owners_ = 1;
  const ComPtr<EventSource> events_;
  UniqueObject asked_;     // a command waits
  UniqueObject answered_;  // its result is there
  UniqueObject gone_;      // the thread has given the file and the device back

  Lock callers_;  // guards the next three: one command at a time
  bool started_ = false;
  Command command_ = {};
  HRESULT result_ = S_OK;

  Lock shown_;  // guards what callers read directly; only the player's thread changes it
  bool has_file_ = false;
  uint64_t position_ = 0;  // 100 ns units, as all times here
  uint64_t duration_ = 0;

  // The player's thread only.
  volatile DWORD thread_id_ = 0;
  HeapText path_;
  AsfDecoder decoder_;  // open while playing
  AudioQueue audio_;
  bool playing_ = false;
  bool input_ended_ = false;
  uint64_t left_at_ = 0;  // the position when it was stopped
  bool change_pending_ = false;
  bool quitting_ = false;
};

}  // namespace kelvo
