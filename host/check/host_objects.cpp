#include "host/check/host_objects.h"

#include <string.h>

#include <algorithm>
#include <chrono>

#include "host/check/report.h"

namespace velmora::check {
namespace {

using Guard = std::lock_guard<std::mutex>;

Reader& It(KelvoMediaReader* object) {
  return *static_cast<Reader*>(object);
}
Output& It(KelvoAudioOutput* object) {
  return *static_cast<Output*>(object);
}

void KELVO_METHOD ReaderSpare(KELVO_SELF(KelvoMediaReader)) {}
int64_t KELVO_METHOD Seek(KELVO_SELF(KelvoMediaReader), int64_t offset, uint32_t origin) {
  Reader& it = It(self);
  const auto size = static_cast<int64_t>(it.bytes.size());
  const int64_t from = origin == KELVO_SEEK_START ? 0 : origin == KELVO_SEEK_END ? size : it.at;
  if (from + offset < 0 || from + offset > size) return KELVO_SEEK_FAILED;
  return it.at = from + offset;
}
int32_t KELVO_METHOD Read(KELVO_SELF(KelvoMediaReader), void* to, uint32_t count, uint32_t* got) {
  Reader& it = It(self);
  *got = 0;
  if (!it.reads) return 0;
  *got = static_cast<uint32_t>(std::min<int64_t>(count, it.bytes.size() - it.at));
  memcpy(to, it.bytes.data() + it.at, *got);
  it.at += *got;
  return 1;
}
int32_t KELVO_METHOD CloseFile(KELVO_SELF(KelvoMediaReader)) {
  It(self).calls += 'c';
  return 7;
}
int32_t KELVO_METHOD OpenPath(KELVO_SELF(KelvoMediaReader), const wchar_t* path, uint32_t mode) {
  Reader& it = It(self);
  it.calls += 'o';
  it.path = path;
  it.mode = mode;
  it.at = 0;
  return it.opens;
}
int32_t KELVO_METHOD Release(KELVO_SELF(KelvoMediaReader), KelvoHostWord a, KelvoHostWord b) {
  Reader& it = It(self);
  it.calls += 'q';
  it.words[0] = a;
  it.words[1] = b;
  return it.lets_close;
}
const KelvoMediaReaderTable kReading = {ReaderSpare, Seek, Read, CloseFile, OpenPath, Release};

void KELVO_METHOD OutputSpare(KELVO_SELF(KelvoAudioOutput)) {
  Guard guard(It(self).mutex);
  It(self).Note('?');
}
int32_t KELVO_METHOD OpenDevice(KELVO_SELF(KelvoAudioOutput), uint32_t count, uint32_t bytes,
                                uint32_t channels, uint32_t rate, uint32_t bits) {
  Output& it = It(self);
  Guard guard(it.mutex);
  it.Note('o');
  const uint32_t asked[] = {count, bytes, channels, rate, bits};
  std::copy(asked, asked + 5, it.asked);
  it.pcm.clear();
  for (int i = 0; i < Output::kBuffers; ++i) {
    it.data[i].resize(bytes);
    it.buffers[i] = {};
    it.buffers[i].data = it.data[i].data();
    it.buffers[i].length_bytes = bytes;
    it.taken[i] = false;
  }
  return it.opens;
}
void KELVO_METHOD CloseDevice(KELVO_SELF(KelvoAudioOutput)) {
  Guard guard(It(self).mutex);
  It(self).Note('c');
}
KelvoOutputBuffer* KELVO_METHOD GetBuffer(KELVO_SELF(KelvoAudioOutput)) {
  Output& it = It(self);
  std::unique_lock<std::mutex> guard(it.mutex);
  for (;;) {
    for (int i = 0; i < Output::kBuffers; ++i) {
      if (it.taken[i]) continue;
      it.taken[i] = true;
      return &it.buffers[i];
    }
    ++it.waiting;
    it.changed.notify_all();
    it.changed.wait(guard);
    --it.waiting;
  }
}
int32_t KELVO_METHOD Write(KELVO_SELF(KelvoAudioOutput), KelvoOutputBuffer* buffer,
                           uint32_t unused_bytes) {
  Output& it = It(self);
  Guard guard(it.mutex);
  it.lengths_agree &= buffer->length_bytes == buffer->valid_bytes &&
                      buffer->valid_bytes + unused_bytes == it.asked[1];
  it.queue.push_back(buffer);
  it.PlayQueue();
  return 0;
}
void KELVO_METHOD Pause(KELVO_SELF(KelvoAudioOutput), uint32_t pause) {
  Output& it = It(self);
  Guard guard(it.mutex);
  it.Note(pause == 1 ? 'p' : pause == 0 ? 'r' : '?');
  it.paused = pause != 0;
  it.PlayQueue();
}
void KELVO_METHOD Reset(KELVO_SELF(KelvoAudioOutput)) {
  Output& it = It(self);
  Guard guard(it.mutex);
  it.Note('x');
  for (KelvoOutputBuffer* buffer : it.queue) it.taken[buffer - it.buffers] = false;
  it.queue.clear();
  it.pcm.clear();
  it.changed.notify_all();
}
uint32_t KELVO_METHOD PlayedSamples(KELVO_SELF(KelvoAudioOutput), KelvoHostWord a,
                                    KelvoHostWord b) {
  Output& it = It(self);
  Guard guard(it.mutex);
  it.words[0] = a;
  it.words[1] = b;
  return it.asked[2] ? static_cast<uint32_t>(it.pcm.size() / (2 * it.asked[2])) : 0;
}
int32_t KELVO_METHOD Drained(KELVO_SELF(KelvoAudioOutput)) {
  Guard guard(It(self).mutex);
  return It(self).queue.empty();
}
const KelvoAudioOutputTable kPlaying = {
    OutputSpare, OutputSpare, OutputSpare, OutputSpare, OpenDevice, CloseDevice,   GetBuffer,
    OutputSpare, Write,       Pause,       OutputSpare, Reset,      PlayedSamples, Drained};

}  // namespace

Reader::Reader(std::string content) : KelvoMediaReader{&kReading}, bytes(std::move(content)) {}

Output::Output() : KelvoAudioOutput{&kPlaying} {}

void Output::SetHold(bool to) {
  Guard guard(mutex);
  hold = to;
  PlayQueue();
}

bool Output::WaitUntilFull() {
  std::unique_lock<std::mutex> guard(mutex);
  return changed.wait_for(guard, std::chrono::milliseconds(kWaitMs), [&] { return waiting > 0; });
}

std::string Output::Calls() const {
  Guard guard(mutex);
  return calls;
}

std::string Output::Played() const {
  Guard guard(mutex);
  return pcm;
}

void Output::Forget() {
  Guard guard(mutex);
  calls.clear();
}

void Output::PlayQueue() {
  if (hold || paused) return;
  for (KelvoOutputBuffer* buffer : queue) {
    pcm.append(buffer->data, buffer->valid_bytes);
    taken[buffer - buffers] = false;
  }
  queue.clear();
  changed.notify_all();
}

}  // namespace velmora::check
