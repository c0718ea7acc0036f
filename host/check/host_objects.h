// The host's own objects, as the checks hand them in: they answer as told, and note what is called.
#pragma once

#include <kelvo/kelvo.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>

namespace velmora::check {

// A file in memory.
struct Reader : KelvoMediaReader {
  explicit Reader(std::string content);

  std::string bytes;
  int64_t at = 0;
  std::string calls;  // a letter each: o open, c close, q the question whether to close
  std::wstring path;
  uint32_t mode = 0;
  KelvoHostWord words[2] = {};
  bool opens = true, lets_close = true, reads = true;
};

// A sound device that plays at once, or nothing until it is told to. Both threads call it.
struct Output : KelvoAudioOutput {
  static constexpr int kBuffers = 8;

  Output();

  void SetHold(bool to);
  // Waits until the plug-in waits for a buffer, or has brought all it has; false when it does not
  // come to that.
  bool WaitUntilFull();
  std::string Calls() const;
  std::string Played() const;  // the samples since Open or the last Reset
  void Forget();               // the calls

  bool opens = true;
  uint32_t asked[5] = {};  // the arguments of Open
  bool lengths_agree = true;
  KelvoHostWord words[2] = {};

  // With the lock held.
  void Note(char call) { calls += call; }
  void PlayQueue();

  mutable std::mutex mutex;
  std::condition_variable changed;
  std::string calls;  // a letter each: o open, c close, p pause, r run, x reset
  std::string pcm;
  std::string data[kBuffers];
  KelvoOutputBuffer buffers[kBuffers] = {};
  bool taken[kBuffers] = {};  // handed out, or in the queue
  std::deque<KelvoOutputBuffer*> queue;
  bool hold = false, paused = false;
  int waiting = 0;
};

}  // namespace velmora::check
