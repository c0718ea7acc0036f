#include "input/vorbis/ogg_vorbis_plugin.h"

#include "base/memory/heap.h"
#include "base/text/wide.h"
#include "input/restore_base.h"
#include "input/vorbis/decoder_heap.h"

namespace kelvo {
namespace {

void FillFromComments(const CommentBlock& comments, MediaInfo* info) noexcept {
  for (wchar_t& c : info->genre) c = 0;
  constexpr size_t kGenreCapacity = sizeof(info->genre) / sizeof(info->genre[0]);
  CopyWide(info->genre, kGenreCapacity, comments.genre);
  info->track = ParseDecimal(comments.track_number);
}

// Where a host looks for the fields, in the order of their declaration; with pointers of 64 bits
// the order alone is fixed. (The lock is 24 bytes and its depth.)
constexpr size_t kPlaces[] = {20, 24, 28,  32,  40,  44,  48,  52,  60,  64,
                              68, 72, 100, 620, 624, 628, 632, 636, 640, 644};

template <size_t kCount>
constexpr bool AreInPlace(const size_t (&offsets)[kCount]) {
  static_assert(kCount == sizeof(kPlaces) / sizeof(kPlaces[0]));
  for (size_t i = 0; i < kCount; ++i) {
    const bool right = sizeof(void*) == 4
                           ? offsets[i] == kPlaces[i]
                           : offsets[i] > (i == 0 ? sizeof(InputPlugin) - 1 : offsets[i - 1]);
    if (!right) return false;
  }
  return true;
}

}  // namespace

double FramesToMs(double frames, uint32_t rate) noexcept {
  return rate == 0 ? 0.0 : frames / rate * 1000.0;
}

int32_t SaturatedMs(double milliseconds) noexcept {
  return milliseconds < 2147483647.0 ? static_cast<int32_t>(milliseconds) : INT32_MAX;
}

OggVorbisPlugin::OggVorbisPlugin(FileSystem& files) noexcept : files_(files) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
  using P = OggVorbisPlugin;
  static_assert(AreInPlace({offsetof(P, notify_window_), offsetof(P, stream_),
                            offsetof(P, total_frames_),  offsetof(P, reserved_),
                            offsetof(P, channels_),      offsetof(P, sample_rate_),
                            offsetof(P, bit_rate_),      offsetof(P, more_reserved_),
                            offsetof(P, thread_),        offsetof(P, thread_priority_),
                            offsetof(P, ready_),         offsetof(P, lock_),
                            offsetof(P, path_),          offsetof(P, current_),
                            offsetof(P, buffer_bytes_),  offsetof(P, free_bytes_),
                            offsetof(P, seek_pending_),  offsetof(P, run_output_),
                            offsetof(P, stop_request_),  offsetof(P, seek_base_)}));
#pragma GCC diagnostic pop
  DecoderHeap::AttachModule();
}

OggVorbisPlugin::~OggVorbisPlugin() {
  // A thread that did not end by itself still runs, or was ended by the system in the middle of
  // anything: the stream that it used stays as it is.
  if (thread_.held() && !(thread_done_ && thread_.ended())) {
    stream_.Forget();
    return;
  }
  TearDown();
}

// The decoding thread has ended. Afterwards no member needs its destructor.
void OggVorbisPlugin::TearDown() noexcept {
  if (std::exchange(torn_down_, true)) return;
  thread_.Join();
  stream_.Close();
  ready_.Close();
  lock_.Close();
  DecoderHeap::DetachModule();
}

void OggVorbisPlugin::Destroy(uint32_t flags) noexcept {
  if (thread_.held()) StopThread();
  TearDown();
  if ((flags & 1) != 0) {
    HeapFree(this);
  } else {
    RestoreBaseOperations<OggVorbisInput>(this);
  }
}

int32_t OggVorbisPlugin::Open(const wchar_t* path, uint32_t mode) noexcept {
  if (!path || WideLength(path) >= kTextCapacity || !reader_) return 0;
  if (!reader_->Open(path, mode)) return 0;
  stream_.Forget();  // one that the host should have closed: the reader has the new file already
  stream_ = OpenVorbisReader(reader_);
  if (!stream_) {
    reader_->Close();
    return 0;
  }
  CopyWide(path_, kTextCapacity, path);
  VorbisInfo info;
  total_frames_ = static_cast<uint32_t>(VorbisTotal(stream_.get()));
  if (total_frames_ == 0 || !GetVorbisInfo(stream_.get(), &info)) {
    stream_.Close();
    reader_->Close();
    return 0;
  }
  channels_ = static_cast<uint32_t>(info.channels);
  sample_rate_ = static_cast<uint32_t>(info.rate);
  bit_rate_ = static_cast<uint32_t>(info.bitrate_nominal / 1000);
  for (uint32_t& word : reserved_) word = 0;
  for (uint32_t& word : more_reserved_) word = 0;
  // The new file starts at its beginning, wherever the last one was sought to.
  seek_pending_ = 0;
  seek_base_ = 0;
  return 1;
}

int32_t OggVorbisPlugin::Close(HostWord a, HostWord b) noexcept {
  if (!reader_ || !reader_->Release(a, b)) return 0;
  if (!stream_) return 0;
  stream_.Close();
  return reader_->Close();
}

int32_t OggVorbisPlugin::GetDisplayTitle(wchar_t* title) noexcept {
  if (!title) return 0;
  title[0] = 0;
  CommentBlock comments;
  if (!GetVorbisComments(stream_.get(), &comments)) return 0;
  MakeDisplayTitle(comments, path_, title);
  return 1;
}

void OggVorbisPlugin::GetMediaInfo(MediaInfo* info) noexcept {
  if (!info || !stream_) return;
  info->sample_rate = sample_rate_;
  info->bit_rate = bit_rate_;
  info->stereo = channels_ == 2;
  CommentBlock comments;
  GetVorbisComments(stream_.get(), &comments);
  FillFromComments(comments, info);
}

int32_t OggVorbisPlugin::GetLengthMs() noexcept {
  return stream_ ? SaturatedMs(FramesToMs(total_frames_, sample_rate_)) : 0;
}

int32_t OggVorbisPlugin::GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                                     MediaInfo* info, uint32_t* length_ms, uint32_t*,
                                     wchar_t* artist, wchar_t* title) noexcept {
  const OpenVorbis stream = OpenVorbisPath(files_, path);
  if (!stream) return 0;
  VorbisInfo format = {};
  const bool has_format = GetVorbisInfo(stream.get(), &format);
  if (has_format && info) {
    info->bit_rate = static_cast<uint32_t>(format.bitrate_nominal / 1000);
    info->sample_rate = static_cast<uint32_t>(format.rate);
    info->stereo = format.channels > 1;
  }
  CommentBlock comments;
  if (GetVorbisComments(stream.get(), &comments)) {
    if (info) FillFromComments(comments, info);
    if (display_title) MakeDisplayTitle(comments, path, display_title);
    if (album) CopyWide(album, kTextCapacity, comments.album);
    if (artist) CopyWide(artist, kTextCapacity, comments.artist);
    if (title) CopyWide(title, kTextCapacity, comments.title);
  }
  if (length_ms) {
    const double ms = FramesToMs(static_cast<double>(VorbisTotal(stream.get())),
                                 static_cast<uint32_t>(format.rate));
    *length_ms = ms < 4294967295.0 ? static_cast<uint32_t>(ms) : UINT32_MAX;
  }
  return 1;
}

}  // namespace kelvo
