// Any bytes as a file: opening, asking, reading and seeking over all links end, in bounded memory,
// and close the reader exactly when it was opened.
#include <stddef.h>
#include <stdint.h>

#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/vorbis_stream.h"
#include "tests/fuzz/require.h"
#include "tests/support/memory_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kelvo;
  static const bool attached = [] {
    DecoderHeap::AttachModule();
    return true;
  }();
  static_cast<void>(attached);
  test::MemoryReader reader(std::vector<char>(data, data + size));
  OpenVorbis stream = OpenVorbisReader(&reader);
  fuzz::Require(reader.log.empty());
  if (!stream) return 0;
  VorbisInfo info;
  if (GetVorbisInfo(stream.get(), &info)) fuzz::Require(info.channels > 0 && info.rate > 0);
  const int64_t total = VorbisTotal(stream.get());
  fuzz::Require(total >= 0);
  // The first reads come before any seek; the file's own bytes choose one of the places.
  const int64_t chosen = total > 0 ? static_cast<int64_t>(size * 2654435761u) % total : 0;
  for (const int64_t place : {int64_t{-1}, total / 2, total - 1, chosen, int64_t{0}, total / 3}) {
    if (place >= 0 && SeekVorbis(stream.get(), place)) {
      fuzz::Require(VorbisPosition(stream.get()) >= 0);
    }
    static char pcm[16384];
    for (int i = 0; i < 6; ++i) {
      uint32_t count;
      const VorbisRead result = ReadVorbis(stream.get(), pcm, sizeof(pcm), &count);
      fuzz::Require(count <= sizeof(pcm) && (result == kReadData) == (count > 0));
      if (result == kReadEnd) break;
    }
    CommentBlock comments;
    fuzz::Require(GetVorbisComments(stream.get(), &comments));
  }
  stream.Close();
  fuzz::Require(reader.log == "close ");
  return 0;
}
