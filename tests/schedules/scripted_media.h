// What the decoding thread works on, scripted and watched: a stream in place of the decoder, a
// reader, and an output. All of it writes down who called what, one letter a call:
//   output: o opens, O in vain, c closes, g hands out a buffer, w takes one, p pauses, r runs,
//     R resets, q is drained, n is not     reader: a opens, l is asked to release, K closes
//   stream: d decodes, e end, x error, k seeks, F is freed
//   z has slept, m message, 1 2 3 the state
#pragma once

#include <string>
#include <vector>

#include "base/sync/lock.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "kelvo/audio_output.h"
#include "kelvo/media_reader.h"

namespace kelvo::test {

// Of a file whose PCM is its frames' numbers: 12 kHz mono, so buffers of 8192 bytes.
constexpr uint32_t kRate = 12000;
constexpr uint32_t kBufferBytes = 8192;
constexpr int64_t kFramesARead = 1500;

enum class Pace { kAtOnce, kAsItDrains, kHeld };

struct World {
  // The script.
  Pace pace = Pace::kAtOnce;
  bool open_fails = false;
  int64_t frames = 0;
  int64_t error_at = -1;  // frame
  bool seek_fails = false;

  // What was seen.
  std::string host;                  // calls in the operation that is under way
  std::string thread;                // calls of the thread that was started last
  std::string all;                   // the thread's calls with a quote before them
  bool held = false;                 // a thread has been started and not been joined
  bool joined = false;               // there is none to stop; at first there seems to be one
  char operation = 0;                // that is under way
  bool stop_asked = false;           // since the thread was started
  bool toggled_late = false;         // since the thread came to the end of the file
  uint32_t state_at_end = kStopped;  // of the file
  enum { kNo, kMaybe, kYes } pending = kNo;
  bool seek_ended = false;     // the operation has nothing left to do
  bool sought_before = false;  // when the thread last looked, in its drain
  uint32_t state = kStopped;
  uint32_t restarted_in = kStopped;  // state
  uint32_t states_seen = 0;          // in the operation: bits
  int messages = 0;
  int messages_due = 0;      // by threads before the last
  uint32_t base = 0;         // where the last seek went, or 0 since a thread closed the output
  uint32_t base_before = 0;  // the operation
  bool base_sure = true;     // no: the seek met the thread's end, so it may be either
  int64_t at = 0;            // frame that the stream decodes next
  int64_t from = 0;          // where what is heard should begin
  uint32_t answered = 0;     // by the output, when asked for what it has played

  bool Did(const char* calls) const { return thread.find_first_of(calls) != std::string::npos; }
  bool Sought() const { return pending == kYes && seek_ended; }
  void Note(char call);
  void Clear();
};
extern World g_world;
extern bool (*g_check_thread)(
    const std::string& calls);  // of one before the last; whether a message is due
extern VorbisStream* g_stream;  // the one that is open
void DropStream();

class ScriptedOutput final : public AudioOutput {
 public:
  int32_t Open(uint32_t count, uint32_t bytes, uint32_t channels, uint32_t rate,
               uint32_t bits) noexcept override;
  void Close() noexcept override;
  OutputBuffer* GetBuffer() noexcept override;
  int32_t Write(OutputBuffer* buffer, uint32_t unused) noexcept override;
  void Pause(uint32_t pause) noexcept override;
  void Reset() noexcept override;
  uint32_t PlayedSamples(HostWord, HostWord) noexcept override;
  int32_t Drained() noexcept override;

  // The decoder's own view of the buffer that it fills.
  void Decoded(const char* at, uint32_t room, int64_t frame, int64_t frames);

 private:
  struct Span {
    int64_t first, end;
  };
  void Consume();

  OutputBuffer buffer_ = {};
  char data_[kBufferBytes];
  bool handed_out_ = false;
  uint32_t filled_ = 0;
  Span filling_ = {0, 0};
  std::vector<Span> queue_;
  Span heard_ = {-1, -1};
  bool open_ = false;
  bool paused_ = false;
  int polls_ = 0;
};
extern ScriptedOutput g_output;

class ScriptedReader final : public MediaReader {
 public:
  bool keeps = false;
  int64_t Seek(int64_t, uint32_t) noexcept override { return 0; }
  int32_t Read(void*, uint32_t, uint32_t*) noexcept override { return 0; }
  int32_t Close() noexcept override {
    g_world.Note('K');
    return 7;
  }
  int32_t Open(const wchar_t*, uint32_t) noexcept override {
    g_world.Note('a');
    return 1;
  }
  int32_t Release(HostWord, HostWord) noexcept override {
    g_world.Note('l');
    return !keeps;
  }
};

// Its changes of the state pass through the table, as a host's would.
class WatchedPlugin final : public OggVorbisPlugin {
 public:
  WatchedPlugin() : OggVorbisPlugin(SystemFiles()) {}
  void SetState(uint32_t state) noexcept override;
  uint32_t GetState() noexcept override;
};

}  // namespace kelvo::test
