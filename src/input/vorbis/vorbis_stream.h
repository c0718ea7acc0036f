// One Ogg Vorbis file, decoded by the integer decoder. Every function accepts a null stream and
// then answers as if there were nothing. One thread at a time per stream, but for
// GetVorbisComments.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <utility>

#include "base/files/file_system.h"
#include "input/vorbis/comments.h"
#include "kelvo/media_reader.h"

namespace kelvo {

class VorbisStream;

// Of the logical stream at the current position.
struct VorbisInfo {
  int32_t version;
  int32_t channels;
  int32_t rate;  // Hz
  int32_t bitrate_upper;
  int32_t bitrate_nominal;  // bits per second; the others too
  int32_t bitrate_lower;
  int32_t bitrate_window;
};

enum VorbisRead : int32_t {
  kReadData = 0,
  kReadTooSmall = 1,  // fewer than kLeastReadBytes asked for: nothing was read
  kReadEnd = 2,
  kReadError = -2,
};
constexpr uint32_t kLeastReadBytes = 4096;

// Also closes the file, or the reader.
void CloseVorbis(VorbisStream* stream) noexcept;

// Owns one stream.
class OpenVorbis {
 public:
  OpenVorbis() noexcept = default;
  explicit OpenVorbis(VorbisStream* stream) noexcept : stream_(stream) {}
  OpenVorbis(OpenVorbis&& other) noexcept : stream_(std::exchange(other.stream_, nullptr)) {}
  OpenVorbis& operator=(OpenVorbis&& other) noexcept {
    if (this != &other) CloseVorbis(std::exchange(stream_, std::exchange(other.stream_, nullptr)));
    return *this;
  }
  ~OpenVorbis() { CloseVorbis(stream_); }

  explicit operator bool() const noexcept { return stream_ != nullptr; }
  VorbisStream* get() const noexcept { return stream_; }
  void Close() noexcept { CloseVorbis(std::exchange(stream_, nullptr)); }
  // Leaves the stream as it is, for good.
  void Forget() noexcept { stream_ = nullptr; }

 private:
  VorbisStream* stream_ = nullptr;
};

// Empty when the file cannot be opened or is no Ogg Vorbis file.
[[nodiscard]] OpenVorbis OpenVorbisPath(FileSystem& files, const wchar_t* path) noexcept;
// The reader is borrowed. When nothing comes back the reader has not been closed.
[[nodiscard]] OpenVorbis OpenVorbisReader(MediaReader* reader) noexcept;

// One decoder call: up to `bytes` bytes of interleaved 16-bit PCM. *count is 0 unless kReadData.
VorbisRead ReadVorbis(VorbisStream* stream, void* destination, uint32_t bytes,
                      uint32_t* count) noexcept;

// Positions and lengths are sample frames of the whole file, over all logical streams.
bool SeekVorbis(VorbisStream* stream, int64_t frame) noexcept;
int64_t VorbisPosition(VorbisStream* stream) noexcept;
int64_t VorbisTotal(VorbisStream* stream) noexcept;

bool GetVorbisInfo(VorbisStream* stream, VorbisInfo* info) noexcept;
// Zeroes the block, then fills it; false for a null stream. May be called while another thread
// reads or seeks: the comments stay as they were when the stream was opened, and which logical
// stream is the current one is a word of its own. They outlive errors of the decoder.
bool GetVorbisComments(VorbisStream* stream, CommentBlock* block) noexcept;

}  // namespace kelvo
