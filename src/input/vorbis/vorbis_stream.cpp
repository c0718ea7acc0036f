#include "input/vorbis/vorbis_stream.h"

#include <stdio.h>
#include <string.h>

#include "base/files/c_file.h"
#include "base/memory/heap.h"
#include "base/sync/shared_word.h"
#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/reader_bridge.h"
#include "ivorbisfile.h"

namespace kelvo {

class VorbisStream {
 public:
  FILE* file = nullptr;  // opened here, or else the host's reader is the source
  ReaderSource reader = {nullptr, 0};
  OggVorbis_File decoder = {};
  DecoderHeap heap;
  SharedWord lost;  // memory ran out inside the decoder

  // Calls the decoder; false when it is lost.
  template <class Work>
  bool Decode(Work work) noexcept {
    reader.empty_reads = 0;
    if (!lost && !heap.Run(work)) lost = 1;
    return !lost;
  }
};

namespace {

int SeekCallback(void* source, ogg_int64_t offset, int origin) {
  return SeekInReader(source, offset, origin);
}
size_t ReadCallback(void* destination, size_t size, size_t count, void* source) {
  return ReadFromReader(destination, size, count, source);
}
int CloseCallback(void* source) {
  return CloseReader(source);
}
long TellCallback(void* source) {
  return TellReader(source);
}

}  // namespace

VorbisStream* OpenVorbisPath(const wchar_t* path) noexcept {
  if (!path || path[0] == 0) return nullptr;
  FILE* file = OpenCFile(path);
  if (!file) return nullptr;
  VorbisStream* stream = HeapNew<VorbisStream>();
  if (!stream) {
    fclose(file);
    return nullptr;
  }
  int result = -1;
  if (stream->Decode([&] { result = ov_open(file, &stream->decoder, nullptr, 0); }) &&
      result >= 0) {
    stream->file = file;
    return stream;
  }
  fclose(file);
  HeapDelete(stream);
  return nullptr;
}

VorbisStream* OpenVorbisReader(MediaReader* reader) noexcept {
  if (!reader) return nullptr;
  VorbisStream* stream = HeapNew<VorbisStream>();
  if (!stream) return nullptr;
  stream->reader.reader = reader;
  const ov_callbacks callbacks = {ReadCallback, SeekCallback, CloseCallback, TellCallback};
  int result = -1;
  if (stream->Decode([&] {
        result = ov_open_callbacks(&stream->reader, &stream->decoder, nullptr, 0, callbacks);
      }) &&
      result >= 0) {
    return stream;
  }
  HeapDelete(stream);
  return nullptr;
}

void CloseVorbis(VorbisStream* stream) noexcept {
  if (!stream) return;
  // The decoder closes its source as it is cleared; a lost one cannot any more.
  if (!stream->Decode([&] { ov_clear(&stream->decoder); })) {
    if (stream->file) {
      fclose(stream->file);
    } else {
      CloseReader(&stream->reader);
    }
  }
  HeapDelete(stream);
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
  return true;
}

bool GetVorbisComments(VorbisStream* stream, CommentBlock* block) noexcept {
  memset(block, 0, sizeof(*block));
  if (!stream) return false;
  const vorbis_comment* list = stream->lost ? nullptr : ov_comment(&stream->decoder, -1);
  if (!list) return true;
  for (int i = 0; i < list->comments; ++i) {
    if (list->user_comments[i]) MapComment(list->user_comments[i], block);
  }
  return true;
}

}  // namespace kelvo
