#include "tests/schedules/scripted_media.h"

#include <string.h>

#include "base/memory/heap.h"
#include "input/vorbis/decoder_heap.h"
#include "kelvo/messages.h"
#include "tests/schedules/scheduler.h"

namespace kelvo {
namespace test {

World g_world;
VorbisStream* g_stream;
ScriptedOutput g_output;

bool (*g_check_thread)(const std::string&);

void World::Clear() {
  const auto reused = [](std::string& text) {
    text.clear();
    return std::move(text);
  };
  World next;
  next.host = reused(host);
  next.thread = reused(thread);
  next.all = reused(all);
  *this = std::move(next);
}

void World::Note(char call) {
  Point();
  if (!OnHost()) all += '\'';
  if (!OnHost() && (call == 'o' || call == 'O')) {
    messages_due += g_check_thread(thread);
    thread.clear();
    stop_asked = toggled_late = false;
  }
  all += call;
  std::string& calls = OnHost() ? host : thread;
  // What starts anew runs again, unless the user has paused it: that is looked at with the lock
  // held.
  if (!OnHost() && !calls.empty() && calls.back() == 'R' &&
      (call == 'r') != (restarted_in == kPlaying)) {
    Fail("is started anew in the wrong state");
  }
  calls += call;
}

int32_t ScriptedOutput::Open(uint32_t count, uint32_t bytes, uint32_t channels, uint32_t rate,
                             uint32_t bits) noexcept {
  g_world.Note(g_world.open_fails ? 'O' : 'o');
  if (count != 8 || bytes != kBufferBytes || channels != 1 || rate != kRate || bits != 16) {
    Fail("the output is opened for another format");
  }
  g_world.from = g_world.at;
  g_world.sought_before = false;
  handed_out_ = paused_ = false;
  polls_ = 0;
  queue_.clear();
  heard_ = {-1, -1};
  return open_ = !g_world.open_fails;
}

void ScriptedOutput::Close() noexcept {
  g_world.Note('c');
  open_ = false;
  // A seek at the very end may be forgotten; one before that is.
  if (g_world.pending == World::kYes) {
    g_world.pending = g_world.sought_before ? World::kNo : World::kMaybe;
  }
  if (g_world.base_sure && !strchr("S0", g_world.operation)) g_world.base = 0;
  if (!g_world.Did("xqO") && !g_world.stop_asked) Fail("stops though nobody has asked");
}

// Two buffers are as good as eight, and sooner full.
OutputBuffer* ScriptedOutput::GetBuffer() noexcept {
  g_world.Note('g');
  if (HoldsALock()) Fail("waits for a buffer with a lock held");
  if (handed_out_) Fail("asks for a second buffer");
  if (g_world.pace == Pace::kAsItDrains && queue_.size() == 2) Consume();
  WaitUntil([&] { return queue_.size() < 2 || (g_world.pace != Pace::kHeld && !paused_); });
  if (queue_.size() == 2) Consume();
  handed_out_ = true;
  filled_ = 0;
  buffer_.data = data_;
  return &buffer_;
}

void ScriptedOutput::Decoded(const char* at, uint32_t room, int64_t frame, int64_t frames) {
  if (!handed_out_ || at != data_ + filled_ || room != kBufferBytes - filled_) {
    Fail("decodes beside the free part of the buffer");
  }
  if (filled_ == 0)
    filling_.first = frame;
  else if (filling_.end != frame)
    Fail("a buffer holds two places of the file");
  filling_.end = frame + frames;
  filled_ += static_cast<uint32_t>(frames) * 2;
}

int32_t ScriptedOutput::Write(OutputBuffer* buffer, uint32_t unused) noexcept {
  g_world.Note('w');
  const bool last = g_world.Did("e");
  if (!handed_out_ || buffer != &buffer_ || buffer->length_bytes != filled_ ||
      buffer->valid_bytes != filled_ || unused != kBufferBytes - filled_ ||
      (!last && unused >= kLeastReadBytes)) {
    Fail("a buffer is handed over with wrong sizes");
  }
  handed_out_ = false;
  queue_.push_back(filled_ ? filling_ : Span{-1, -1});
  if (g_world.pace == Pace::kAtOnce) Consume();
  return 0;
}

void ScriptedOutput::Consume() {
  if (paused_ || queue_.empty()) return;
  const Span next = queue_.front();
  queue_.erase(queue_.begin());
  if (next.first < 0) return;
  if (heard_.first < 0)
    heard_.first = next.first;
  else if (heard_.end != next.first)
    Fail("something is left out of what is heard");
  heard_.end = next.end;
}

void ScriptedOutput::Pause(uint32_t pause) noexcept {
  g_world.Note(pause ? 'p' : 'r');
  paused_ = pause != 0;
}

void ScriptedOutput::Reset() noexcept {
  g_world.Note('R');
  if (!OnHost()) {
    if (g_world.pending == World::kNo) Fail("starts anew though nobody has sought");
    g_world.pending = World::kNo;
    g_world.restarted_in = g_world.state;
    filled_ = 0;
  }
  if (OnHost()) g_world.seek_ended = true;
  queue_.clear();
  heard_ = {-1, -1};
}

uint32_t ScriptedOutput::PlayedSamples(HostWord a, HostWord b) noexcept {
  Point();
  if (a != 3 || b != 4) Fail("the host's two words are lost");
  return g_world.answered = static_cast<uint32_t>(heard_.end - heard_.first);
}

int32_t ScriptedOutput::Drained() noexcept {
  if (g_world.sought_before) Fail("drains on after a seek");
  const bool drained = queue_.empty();
  g_world.Note(drained ? 'q' : 'n');
  if (drained && g_world.pending == World::kNo && !g_world.stop_asked &&
      (heard_.first >= 0 ? heard_.first != g_world.from || heard_.end != g_world.frames
                         : g_world.from != g_world.frames)) {
    Fail("not all is heard to the end");
  }
  g_world.sought_before = drained && g_world.Sought();
  // Held is not for ever.
  if (g_world.pace != Pace::kHeld || ++polls_ > 2) Consume();
  return drained;
}

void WatchedPlugin::SetState(uint32_t state) noexcept {
  g_world.Note(static_cast<char>('0' + state));
  g_world.state = state;
  g_world.states_seen |= 1u << state;
  OggVorbisPlugin::SetState(state);
}

uint32_t WatchedPlugin::GetState() noexcept {
  Point();
  return OggVorbisPlugin::GetState();
}

}  // namespace test

using test::Fail;
using test::g_world;
using test::OnHost;
using test::Point;

// The stream: one thread at a time.
class VorbisStream {
 public:
  explicit VorbisStream(MediaReader* opened) : reader(opened) { test::g_stream = this; }
  ~VorbisStream() { test::g_stream = nullptr; }

  void Enter() {
    if (busy_) Fail("two threads use the stream");
    busy_ = true;
    Point();
    busy_ = false;
  }

  MediaReader* reader;

 private:
  bool busy_ = false;
};

void test::DropStream() {
  HeapDelete(g_stream);
}

OpenVorbis OpenVorbisReader(MediaReader* reader) noexcept {
  g_world.at = 0;
  return OpenVorbis(HeapNew<VorbisStream>(reader));
}
OpenVorbis OpenVorbisPath(FileSystem&, const wchar_t*) noexcept {
  return OpenVorbis();
}
void CloseVorbis(VorbisStream* stream) noexcept {
  if (!stream) return;
  g_world.Note('F');
  stream->Enter();
  stream->reader->Close();
  HeapDelete(stream);
}

VorbisRead ReadVorbis(VorbisStream* stream, void* destination, uint32_t bytes,
                      uint32_t* count) noexcept {
  *count = 0;
  if (bytes < kLeastReadBytes) Fail("asks the decoder for too little");
  stream->Enter();
  int64_t frames = g_world.frames - g_world.at;
  if (frames > test::kFramesARead) frames = test::kFramesARead;
  const bool error = g_world.at == g_world.error_at;
  g_world.Note(error ? 'x' : frames == 0 ? 'e' : 'd');
  if (g_world.pending == test::World::kYes) Fail("goes on decoding after a seek");
  if (error) return kReadError;
  if (frames == 0) {
    g_world.toggled_late = strchr("TPp", g_world.operation);
    g_world.state_at_end = g_world.state;
    return kReadEnd;
  }
  test::g_output.Decoded(static_cast<char*>(destination), bytes, g_world.at, frames);
  g_world.at += frames;
  *count = static_cast<uint32_t>(frames) * 2;
  return kReadData;
}

bool SeekVorbis(VorbisStream* stream, int64_t frame) noexcept {
  g_world.Note('k');
  stream->Enter();
  if (g_world.seek_fails) return false;
  g_world.at = g_world.from = frame;
  g_world.base = static_cast<uint32_t>(frame);
  g_world.pending = test::World::kYes;
  g_world.seek_ended = false;
  return true;
}
int64_t VorbisPosition(VorbisStream* stream) noexcept {
  stream->Enter();
  return g_world.at;
}
int64_t VorbisTotal(VorbisStream*) noexcept {
  return g_world.frames;
}
bool GetVorbisInfo(VorbisStream*, VorbisInfo* info) noexcept {
  *info = {};
  info->channels = 1;
  info->rate = test::kRate;
  return true;
}
bool GetVorbisComments(VorbisStream* stream, CommentBlock* block) noexcept {
  memset(block, 0, sizeof(*block));
  return stream != nullptr;
}

void DecoderHeap::AttachModule() noexcept {}
void DecoderHeap::DetachModule() noexcept {}

void SleepMs(uint32_t) noexcept {
  if (test::HoldsALock()) Fail("sleeps with a lock held");
  test::Sleep();
  g_world.Note('z');
  g_world.sought_before = g_world.Sought();
}

void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept {
  if (g_world.thread.back() == 'z' && g_world.pending != test::World::kYes)
    Fail("leaves the output open");
  g_world.Note('m');
  if (window != &g_world || message != kMessageEndOfPlayback || wparam || lparam) {
    Fail("the message is another one");
  }
  ++g_world.messages;
}

}  // namespace kelvo
