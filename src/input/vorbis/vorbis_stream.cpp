#include "input/vorbis/vorbis_stream.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>

#include "base/memory/heap.h"
#include "base/sync/shared_word.h"
#include "input/vorbis/decoder_heap.h"
#include "ivorbisfile.h"

namespace kelvo {
namespace {

// Searching backwards for a page the decoder reads the same range again and again until it finds
// one. It never finds one when the reader's seeks fail or the file has shrunk: after this many
// empty reads in one call the end is reported as an error, which ends the search.
constexpr uint32_t kMostEmptyReads = 64;

size_t Counted(size_t bytes_read) noexcept {
  if (DecoderHeap::Current()->CountEmptyReads(bytes_read == 0) > kMostEmptyReads) errno = EIO;
  return bytes_read;
}

// The decoder's input on top of the host's MediaReader.

size_t ReadFromReader(void* destination, size_t size, size_t count, void* source) noexcept {
  if (size == 0 || count == 0 || !source) return 0;
  uint32_t bytes_read = 0;
  if (!static_cast<MediaReader*>(source)->Read(destination, static_cast<uint32_t>(size * count),
                                               &bytes_read)) {
    bytes_read = 0;
  }
  if (bytes_read > size * count) bytes_read = 0;  // a reader that overstates would overrun us
  return Counted(bytes_read) / size;
}

// 0, or 1 when the reader failed. Not -1, which would make the decoder take the file for one that
// cannot be seeked in.
int SeekInReader(void* source, ogg_int64_t offset, int origin) noexcept {
  if (!source) return 0;
  const int64_t reached =
      static_cast<MediaReader*>(source)->Seek(offset, static_cast<uint32_t>(origin));
  return reached == kSeekFailed ? 1 : 0;
}

int CloseReader(void* source) noexcept {
  return source ? static_cast<MediaReader*>(source)->Close() : 0;
}

long TellReader(void* source) noexcept {
  if (!source) return 0;
  const int64_t position = static_cast<MediaReader*>(source)->Seek(0, kSeekCurrent);
  return static_cast<long>(static_cast<uint32_t>(position));
}

// The same on top of a file of ours. The decoder reads small pieces: they are taken from one
// larger.
class FileInput {
 public:
  explicit FileInput(OpenFile<FileReader> file) noexcept : file_(std::move(file)) {}

  size_t Read(void* destination, size_t bytes) noexcept {
    if (position_ < buffer_at_ || position_ >= buffer_at_ + buffered_) {
      buffer_at_ = position_;
      if (file_->ReadSome(position_, buffer_, sizeof(buffer_), &buffered_) != ReadResult::kOk) {
        buffered_ = 0;
      }
    }
    const size_t at = static_cast<size_t>(position_ - buffer_at_);
    const size_t got = buffered_ - at < bytes ? buffered_ - at : bytes;
    memcpy(destination, buffer_ + at, got);
    position_ += got;
    return got;
  }
  bool Seek(int64_t offset, int origin) noexcept {
    const int64_t base = origin == SEEK_SET   ? 0
                         : origin == SEEK_CUR ? static_cast<int64_t>(position_)
                                              : static_cast<int64_t>(file_->SizeBytes());
    if (base + offset < 0) return false;
    position_ = static_cast<uint64_t>(base + offset);
    return true;
  }
  uint64_t position() const noexcept { return position_; }

 private:
  OpenFile<FileReader> file_;
  uint64_t position_ = 0;
  uint64_t buffer_at_ = 0;
  size_t buffered_ = 0;
  char buffer_[4096];
};

size_t ReadFromFile(void* destination, size_t size, size_t count, void* source) noexcept {
  if (size == 0) return 0;
  return Counted(static_cast<FileInput*>(source)->Read(destination, size * count)) / size;
}
int SeekInFile(void* source, ogg_int64_t offset, int origin) noexcept {
  return static_cast<FileInput*>(source)->Seek(offset, origin) ? 0 : 1;
}
long TellFile(void* source) noexcept {
  return static_cast<long>(static_cast<uint32_t>(static_cast<FileInput*>(source)->position()));
}

}  // namespace

class VorbisStream {
 public:
  // A host may look at these three.
  void* source = nullptr;  // a MediaReader of the host's, or our file
  uint32_t reserved = 0;
  OggVorbis_File decoder = {};

  HeapPtr<FileInput> file;
  DecoderHeap heap;
  SharedWord lost;  // the decoder was abandoned
  SharedWord link;  // the current logical stream

  bool Open(void* opened_source, const ov_callbacks& callbacks) noexcept {
    source = opened_source;
    int result = -1;
    return Decode([&] { result = ov_open_callbacks(source, &decoder, nullptr, 0, callbacks); }) &&
           result >= 0;
  }

  // Calls the decoder; false when it is lost.
  template <class Work>
  bool Decode(Work work) noexcept {
    if (lost || !heap.Run(work)) {
      lost = 1;
      return false;
    }
    // (No logical stream is set up right after an error: the one before stays the current one.)
    if (decoder.ready_state >= STREAMSET) link = static_cast<uint32_t>(decoder.current_link);
    return true;
  }
};
static_assert(offsetof(VorbisStream, reserved) == sizeof(void*));
static_assert(offsetof(VorbisStream, decoder) == (sizeof(void*) == 4 ? 8 : 16));

void CloseVorbis(VorbisStream* stream) noexcept {
  if (!stream) return;
  // The decoder closes its source as it is cleared; a lost one cannot any more.
  if (!stream->Decode([&] { ov_clear(&stream->decoder); }) && !stream->file) {
    CloseReader(stream->source);
  }
  HeapDelete(stream);
}

OpenVorbis OpenVorbisPath(FileSystem& files, const wchar_t* path) noexcept {
  if (!path || path[0] == 0) return OpenVorbis();
  OpenFile<FileReader> file = files.OpenRead(path, Share::kReadWrite);
  if (!file) return OpenVorbis();
  HeapPtr<VorbisStream> stream(HeapNew<VorbisStream>());
  if (!stream) return OpenVorbis();
  stream->file.Reset(HeapNew<FileInput>(std::move(file)));
  if (!stream->file ||
      !stream->Open(stream->file.get(), {ReadFromFile, SeekInFile, nullptr, TellFile})) {
    return OpenVorbis();
  }
  return OpenVorbis(stream.Release());
}

OpenVorbis OpenVorbisReader(MediaReader* reader) noexcept {
  if (!reader) return OpenVorbis();
  HeapPtr<VorbisStream> stream(HeapNew<VorbisStream>());
  if (!stream || !stream->Open(reader, {ReadFromReader, SeekInReader, CloseReader, TellReader})) {
    return OpenVorbis();
  }
  return OpenVorbis(stream.Release());
}

VorbisRead ReadVorbis(VorbisStream* stream, void* destination, uint32_t bytes,
                      uint32_t* count) noexcept {
  *count = 0;
  if (!stream) return kReadError;
  if (bytes < kLeastReadBytes) return kReadTooSmall;
  long result = -1;
  if (!stream->Decode([&] {
        int logical_stream;
        result = ov_read(&stream->decoder, static_cast<char*>(destination), static_cast<int>(bytes),
                         &logical_stream);
      })) {
    return kReadError;
  }
  if (result == 0) return kReadEnd;
  if (result < 0) return kReadError;
  *count = static_cast<uint32_t>(result);
  return kReadData;
}

bool SeekVorbis(VorbisStream* stream, int64_t frame) noexcept {
  int result = -1;
  return stream && stream->Decode([&] { result = ov_pcm_seek(&stream->decoder, frame); }) &&
         result == 0;
}

int64_t VorbisPosition(VorbisStream* stream) noexcept {
  int64_t frame = 0;
  if (!stream || !stream->Decode([&] { frame = ov_pcm_tell(&stream->decoder); })) return 0;
  return frame < 0 ? 0 : frame;
}

int64_t VorbisTotal(VorbisStream* stream) noexcept {
  int64_t frames = 0;
  if (!stream || !stream->Decode([&] { frames = ov_pcm_total(&stream->decoder, -1); })) return 0;
  return frames < 0 ? 0 : frames;
}

bool GetVorbisInfo(VorbisStream* stream, VorbisInfo* info) noexcept {
  if (!stream || stream->lost) return false;
  const vorbis_info* found = ov_info(&stream->decoder, -1);
  if (!found) return false;
  info->version = found->version;
  info->channels = found->channels;
  info->rate = static_cast<int32_t>(found->rate);
  info->bitrate_upper = static_cast<int32_t>(found->bitrate_upper);
  info->bitrate_nominal = static_cast<int32_t>(found->bitrate_nominal);
  info->bitrate_lower = static_cast<int32_t>(found->bitrate_lower);
  info->bitrate_window = static_cast<int32_t>(found->bitrate_window);
  return info->rate > 0;  // where the decoder's words have 64 bits it lets more than 31 pass
}

bool GetVorbisComments(VorbisStream* stream, CommentBlock* block) noexcept {
  memset(block, 0, sizeof(*block));
  if (!stream) return false;
  // (The callbacks never call a file unseekable, so the decoder has read all links' headers.)
  const vorbis_comment& list = stream->decoder.vc[stream->link];
  for (int i = 0; i < list.comments; ++i) {
    if (list.user_comments[i]) MapComment(list.user_comments[i], block);
  }
  return true;
}

}  // namespace kelvo
