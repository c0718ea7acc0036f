// What the Ogg Vorbis plug-in costs over the decoder that it wraps. The bare loops call the same
// decoder, with the same heap, on the same file.
#include <stdio.h>
#include <string.h>

#include <condition_variable>
#include <mutex>
#include <vector>

#include "base/memory/heap.h"
#include "base/sync/thread.h"
#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "ivorbisfile.h"
#include "tests/bench/measure.h"
#include "tests/support/memory_reader.h"

namespace {

using namespace kelvo;

constexpr char kFile[] = "../../media/sample.ogg";
constexpr wchar_t kWideFile[] = L"..\\..\\media\\sample.ogg";

// Takes every buffer back at once, so that only decoding takes time.
class InstantOutput final : public AudioOutput {
 public:
  int32_t Open(uint32_t, uint32_t buffer_bytes, uint32_t, uint32_t, uint32_t) noexcept override {
    bytes_ = buffer_bytes;
    buffer_.data = storage;
    return 1;
  }
  void Close() noexcept override {}
  OutputBuffer* GetBuffer() noexcept override { return &buffer_; }
  int32_t Write(OutputBuffer* buffer, uint32_t) noexcept override {
    ++written;
    pcm_bytes += buffer->valid_bytes;
    return 1;
  }
  void Pause(uint32_t) noexcept override {}
  void Reset() noexcept override {}
  uint32_t PlayedSamples(HostWord, HostWord) noexcept override { return 0; }
  int32_t Drained() noexcept override { return 1; }

  static char storage[16384];
  long written = 0;
  long pcm_bytes = 0;

 private:
  OutputBuffer buffer_ = {};
  uint32_t bytes_ = 0;
};
char InstantOutput::storage[16384];

std::mutex g_mutex;
std::condition_variable g_ended;
bool g_end = false;

void OnPost(void*, uint32_t, uintptr_t, intptr_t) {
  std::lock_guard<std::mutex> guard(g_mutex);
  g_end = true;
  g_ended.notify_all();
}

void PlayThroughPlugin(OggVorbisPlugin& plugin, InstantOutput& output) {
  g_end = false;
  plugin.SeekMs(0);
  plugin.Play();
  {
    std::unique_lock<std::mutex> guard(g_mutex);
    g_ended.wait(guard, [] { return g_end; });
  }
  plugin.Stop();
  static_cast<void>(output);
}

size_t Read(void* destination, size_t size, size_t count, void* source) {
  uint32_t got = 0;
  static_cast<MediaReader*>(source)->Read(destination, static_cast<uint32_t>(size * count), &got);
  return got / size;
}
int Seek(void* source, ogg_int64_t offset, int origin) {
  static_cast<MediaReader*>(source)->Seek(offset, static_cast<uint32_t>(origin));
  return 0;
}
int CloseSource(void*) {
  return 0;
}
long Tell(void* source) {
  return static_cast<long>(static_cast<MediaReader*>(source)->Seek(0, kSeekCurrent));
}

void DecodeBarely(OggVorbis_File& decoder, DecoderHeap& heap) {
  static char chunk[16384];
  static_cast<void>(heap.Run([&] {
    ov_pcm_seek(&decoder, 0);
    int link;
    while (ov_read(&decoder, chunk, sizeof(chunk), &link) > 0) {
    }
  }));
}

long g_requests = 0;
bool CountRequest(void*) {
  ++g_requests;
  return false;
}

template <class Work>
long Requests(const Work& work) {
  g_requests = 0;
  SetHeapFaultHook(CountRequest, nullptr);
  work();
  SetHeapFaultHook(nullptr, nullptr);
  return g_requests;
}

void AskBarely() {
  FILE* file = fopen(kFile, "rb");
  DecoderHeap heap;
  OggVorbis_File decoder;
  static_cast<void>(heap.Run([&] {
    if (ov_open(file, &decoder, nullptr, 0) < 0) return;
    volatile int64_t total = ov_pcm_total(&decoder, -1);
    static_cast<void>(total);
    volatile size_t length = 0;
    const vorbis_comment* comments = ov_comment(&decoder, -1);
    for (int i = 0; i < comments->comments; ++i) length += strlen(comments->user_comments[i]);
    ov_clear(&decoder);
  }));
}

std::vector<char> FileBytes() {
  std::vector<char> bytes;
  FILE* file = fopen(kFile, "rb");
  if (!file) return bytes;
  char chunk[4096];
  while (const size_t got = fread(chunk, 1, sizeof(chunk), file)) {
    bytes.insert(bytes.end(), chunk, chunk + got);
  }
  fclose(file);
  return bytes;
}

}  // namespace

// Linked in place of the C library's: a block copied into the output's memory is a copy of PCM that
// the plug-in should not make.
extern "C" void* __real_memcpy(void* destination, const void* source, size_t bytes);
static long g_pcm_copies = 0;
extern "C" void* __wrap_memcpy(void* destination, const void* source, size_t bytes) {
  const char* at = static_cast<const char*>(destination);
  if (at >= InstantOutput::storage && at < InstantOutput::storage + 16384) ++g_pcm_copies;
  return __real_memcpy(destination, source, bytes);
}

int main() {
  const std::vector<char> bytes = FileBytes();
  if (bytes.empty()) {
    printf("no %s; run scripts/make_media.sh\n", kFile);
    return 1;
  }
  SetPostHook(OnPost);
  OggVorbisPlugin plugin(SystemFiles());
  test::MemoryReader reader(bytes);
  InstantOutput output;
  char window;
  plugin.SetReader(&reader);
  plugin.SetOutput(&output);
  plugin.SetNotifyWindow(&window);
  if (!plugin.Open(L"sample.ogg", 0)) return 1;

  test::MemoryReader bare_reader(bytes);
  DecoderHeap heap;
  OggVorbis_File decoder;
  static_cast<void>(heap.Run([&] {
    ov_open_callbacks(static_cast<MediaReader*>(&bare_reader), &decoder, nullptr, 0,
                      {Read, Seek, CloseSource, Tell});
  }));

  const auto ours = [&] { PlayThroughPlugin(plugin, output); };
  const auto bare = [&] { DecodeBarely(decoder, heap); };
  bench::Compare("playing 8 s", 1.02, ours, bare, 25);

  // Once both are warm, what is taken more than by the decoder alone was taken by the plug-in.
  output.written = 0;
  g_pcm_copies = 0;
  const long our_requests = Requests(ours);
  const long bare_requests = Requests(bare);
  // Starting the thread takes one block; it is no cost of a buffer.
  const double extra = static_cast<double>(our_requests - bare_requests - 1) / output.written;
  printf("%-28s %8.2f (goal 0), decoder alone %.2f\n", "allocations per buffer",
         extra > 0 ? extra : 0.0, static_cast<double>(bare_requests) / output.written);
  printf("%-28s %8.2f (goal 0)\n", "PCM copies per buffer",
         static_cast<double>(g_pcm_copies) / output.written);

  const auto ask = [&] {
    for (int i = 0; i < 20; ++i) {
      wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
      MediaInfo info = {};
      uint32_t length;
      plugin.GetFileInfo(kWideFile, display, album, &info, &length, nullptr, artist, title);
    }
  };
  const auto ask_barely = [&] {
    for (int i = 0; i < 20; ++i) AskBarely();
  };
  bench::Compare("asking about a file, 20 x", 1.03, ask, ask_barely, 40);
  static_cast<void>(heap.Run([&] { ov_clear(&decoder); }));
  plugin.Close(0, 0);
  return 0;
}
