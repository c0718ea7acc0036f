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

}  // namespace

int32_t FramesToMs(double frames, uint32_t rate) noexcept {
  if (rate == 0) return 0;
  const double milliseconds = frames / rate * 1000.0;
  return milliseconds < 2147483647.0 ? static_cast<int32_t>(milliseconds) : INT32_MAX;
}

OggVorbisPlugin::OggVorbisPlugin() noexcept {
  DecoderHeap::AttachModule();
}

OggVorbisPlugin::~OggVorbisPlugin() {
  TearDown();
  DecoderHeap::DetachModule();
}

void OggVorbisPlugin::TearDown() noexcept {
  if (thread_.held()) return;
  CloseVorbis(std::exchange(stream_, nullptr));
  ready_.Close();
}

void OggVorbisPlugin::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) {
    HeapDelete(this);
    return;
  }
  TearDown();
  RestoreBaseOperations(this);
}

int32_t OggVorbisPlugin::Open(const wchar_t* path, uint32_t mode) noexcept {
  if (!path || WideLength(path) >= kTextCapacity || !reader_) return 0;
  if (!reader_->Open(path, mode)) return 0;
  stream_ = OpenVorbisReader(reader_);
  if (!stream_) {
    reader_->Close();
    return 0;
  }
  CopyWide(path_, kTextCapacity, path);
  VorbisInfo info;
  total_frames_ = static_cast<uint32_t>(VorbisTotal(stream_));
  if (total_frames_ == 0 || !GetVorbisInfo(stream_, &info)) {
    CloseVorbis(stream_);
    reader_->Close();
    stream_ = nullptr;
    return 0;
  }
  channels_ = static_cast<uint32_t>(info.channels);
  sample_rate_ = static_cast<uint32_t>(info.rate);
  bit_rate_ = static_cast<uint32_t>(info.bitrate_nominal / 1000);
  return 1;
}

int32_t OggVorbisPlugin::Close(HostWord a, HostWord b) noexcept {
  if (!reader_ || !reader_->Release(a, b)) return 0;
  if (!stream_) return 0;
  CloseVorbis(stream_);
  const int32_t result = reader_->Close();
  stream_ = nullptr;
  return result;
}

int32_t OggVorbisPlugin::GetDisplayTitle(wchar_t* title) noexcept {
  if (!title) return 0;
  title[0] = 0;
  CommentBlock comments;
  if (!GetVorbisComments(stream_, &comments)) return 0;
  MakeDisplayTitle(comments, path_, title);
  return 1;
}

void OggVorbisPlugin::GetMediaInfo(MediaInfo* info) noexcept {
  if (!info || !stream_) return;
  info->sample_rate = sample_rate_;
  info->bit_rate = bit_rate_;
  info->stereo = channels_ == 2;
  CommentBlock comments;
  GetVorbisComments(stream_, &comments);
  FillFromComments(comments, info);
}

int32_t OggVorbisPlugin::GetLengthMs() noexcept {
  return stream_ ? FramesToMs(total_frames_, sample_rate_) : 0;
}

int32_t OggVorbisPlugin::GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                                     MediaInfo* info, uint32_t* length_ms, uint32_t*,
                                     wchar_t* artist, wchar_t* title) noexcept {
  VorbisStream* stream = OpenVorbisPath(path);
  if (!stream) return 0;
  VorbisInfo format = {};
  const bool has_format = GetVorbisInfo(stream, &format);
  if (has_format && info) {
    info->bit_rate = static_cast<uint32_t>(format.bitrate_nominal / 1000);
    info->sample_rate = static_cast<uint32_t>(format.rate);
    info->stereo = format.channels > 1;
  }
  CommentBlock comments;
  if (GetVorbisComments(stream, &comments)) {
    if (info) FillFromComments(comments, info);
    if (display_title) MakeDisplayTitle(comments, path, display_title);
    if (album) CopyWide(album, kTextCapacity, comments.album);
    if (artist) CopyWide(artist, kTextCapacity, comments.artist);
    if (title) CopyWide(title, kTextCapacity, comments.title);
  }
  if (length_ms) {
    const double frames = static_cast<double>(VorbisTotal(stream));
    *length_ms = static_cast<uint32_t>(FramesToMs(frames, static_cast<uint32_t>(format.rate)));
  }
  CloseVorbis(stream);
  return 1;
}

}  // namespace kelvo
