// Any bytes as a file: opening, asking, reading some, seeking and closing end, in bounded memory,
// and close the reader exactly when it was opened.
#include <stddef.h>
#include <stdint.h>

#include "tests/fuzz/require.h"
#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/vorbis_stream.h"
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
  CommentBlock comments;
  fuzz::Require(GetVorbisComments(stream.get(), &comments));
  const int64_t total = VorbisTotal(stream.get());
  fuzz::Require(total >= 0);
  static char pcm[8192];
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 50; ++i) {
      uint32_t count;
      const VorbisRead result = ReadVorbis(stream.get(), pcm, sizeof(pcm), &count);
      fuzz::Require(count <= sizeof(pcm) && (result == kReadData) == (count > 0));
      if (result != kReadData) break;
    }
    if (!SeekVorbis(stream.get(), total / 2)) break;
    fuzz::Require(VorbisPosition(stream.get()) >= 0);
  }
  stream.Close();
  fuzz::Require(reader.log == "close ");
  return 0;
}
